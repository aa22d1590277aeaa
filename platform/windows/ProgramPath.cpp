#include "platform/ProgramPath.h"

#include "platform/windows/Windows.h"

#include <string>

namespace platform {

std::filesystem::path programPath()
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

} // namespace platform
