#include "platform/Registry.h"

#include "platform/windows/RegistryKey.h"
#include "platform/windows/WideText.h"

namespace platform {

namespace {

class WindowsRegistry final : public Registry
{
public:
    [[nodiscard]] std::optional<RegistryValue> read(std::uint32_t rootKey, std::string_view keyName,
                                                    std::string_view valueName) const override
    {
        // The root keys are numbers of 32 bits that the system widens with their sign.
        const auto root = reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(rootKey)));
        return RegistryKey(root, toWide(keyName)).value(toWide(valueName));
    }
};

} // namespace

std::unique_ptr<Registry> makeRegistry()
{
    return std::make_unique<WindowsRegistry>();
}

} // namespace platform
