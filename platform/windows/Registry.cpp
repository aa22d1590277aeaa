#include "platform/Registry.h"

#include "platform/windows/Windows.h"

#include <array>

namespace platform {

namespace {

// What the program has always asked for: reading, and writing, which it never does and an ordinary user may not.
constexpr REGSAM kAccess = 0x2003F;

class Key final
{
public:
    Key(HKEY root, const std::string& name)
    {
        LSTATUS status = ::RegOpenKeyExA(root, name.c_str(), 0, kAccess, &m_key);
        if (status == ERROR_ACCESS_DENIED) {
            status = ::RegOpenKeyExA(root, name.c_str(), 0, KEY_READ, &m_key);
        }
        if (status != ERROR_SUCCESS) {
            m_key = nullptr;
        }
    }
    ~Key()
    {
        if (m_key != nullptr) {
            ::RegCloseKey(m_key);
        }
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    [[nodiscard]] std::optional<RegistryValue> value(const std::string& name) const
    {
        std::array<BYTE, Registry::kLargestValue> bytes{};
        auto size = static_cast<DWORD>(bytes.size());
        DWORD type = REG_NONE;
        if (m_key == nullptr ||
            ::RegQueryValueExA(m_key, name.c_str(), nullptr, &type, bytes.data(), &size) != ERROR_SUCCESS) {
            return {};
        }
        return RegistryValue{static_cast<std::uint32_t>(type), std::string(bytes.begin(), bytes.begin() + size)};
    }

private:
    HKEY m_key = nullptr;
};

class WindowsRegistry final : public Registry
{
public:
    [[nodiscard]] std::optional<RegistryValue> read(std::uint32_t rootKey, std::string_view keyName,
                                                    std::string_view valueName) const override
    {
        // The root keys are numbers of 32 bits that the system widens with their sign.
        const auto root = reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(rootKey)));
        return Key(root, std::string(keyName)).value(std::string(valueName));
    }
};

} // namespace

std::unique_ptr<Registry> makeRegistry()
{
    return std::make_unique<WindowsRegistry>();
}

} // namespace platform
