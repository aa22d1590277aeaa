#pragma once

#include "platform/Registry.h"
#include "platform/windows/Windows.h"

#include <optional>
#include <string>

namespace platform {

// A key of the registry, open for its life; none when it cannot be opened.
class RegistryKey final
{
public:
    // The system's call that opens one.
    using OpenKey = LSTATUS(WINAPI*)(HKEY, LPCWSTR, DWORD, REGSAM, PHKEY);

    RegistryKey(HKEY root, const std::wstring& name, OpenKey openKey = &::RegOpenKeyExW);
    ~RegistryKey();
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    // Nothing when there is no such value or it is too large.
    [[nodiscard]] std::optional<RegistryValue> value(const std::wstring& name) const;

private:
    HKEY m_key = nullptr;
};

} // namespace platform
