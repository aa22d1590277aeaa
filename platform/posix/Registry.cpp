#include "platform/Registry.h"

namespace platform {

namespace {

class NoRegistry final : public Registry
{
public:
    [[nodiscard]] std::optional<RegistryValue> read(std::uint32_t /*rootKey*/, std::string_view /*keyName*/,
                                                    std::string_view /*valueName*/) const override
    {
        return {};
    }
};

} // namespace

std::unique_ptr<Registry> makeRegistry()
{
    return std::make_unique<NoRegistry>();
}

} // namespace platform
