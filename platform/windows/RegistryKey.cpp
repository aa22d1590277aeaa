#include "platform/windows/RegistryKey.h"

#include "platform/windows/WideText.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace platform {

namespace {

// What the program has always asked for: reading, and writing, which it never does and an ordinary user may not.
constexpr REGSAM kAccess = 0x2003F;

bool isText(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ || type == REG_LINK;
}

} // namespace

RegistryKey::RegistryKey(HKEY root, const std::wstring& name, OpenKey openKey)
{
    LSTATUS status = openKey(root, name.c_str(), 0, kAccess, &m_key);
    if (status == ERROR_ACCESS_DENIED) {
        status = openKey(root, name.c_str(), 0, KEY_READ, &m_key);
    }
    if (status != ERROR_SUCCESS) {
        m_key = nullptr;
    }
}

RegistryKey::~RegistryKey()
{
    if (m_key != nullptr) {
        ::RegCloseKey(m_key);
    }
}

std::optional<RegistryValue> RegistryKey::value(const std::wstring& name) const
{
    // Texts take two bytes a character here, and one in what is given back.
    std::vector<wchar_t> buffer(Registry::kLargestValue);
    auto size = static_cast<DWORD>(buffer.size() * sizeof(wchar_t));
    DWORD type = REG_NONE;
    if (m_key == nullptr || ::RegQueryValueExW(m_key, name.c_str(), nullptr, &type,
                                               reinterpret_cast<BYTE*>(buffer.data()), &size) != ERROR_SUCCESS) {
        return {};
    }
    const std::string bytes = isText(type) ? fromWide(std::wstring_view(buffer.data(), size / sizeof(wchar_t)))
                                           : std::string(reinterpret_cast<const char*>(buffer.data()), size);
    if (bytes.size() > Registry::kLargestValue) {
        return {};
    }
    return RegistryValue{static_cast<std::uint32_t>(type), bytes};
}

} // namespace platform
