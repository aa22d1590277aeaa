#include "platform/StartProgram.h"

#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"

#include <string>

namespace platform {

namespace {

class WindowsStartProgram final : public StartProgram
{
public:
    [[nodiscard]] std::string withVariables(std::string_view path) const override
    {
        const std::wstring text = toWide(path);
        const DWORD size = ::ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
        std::wstring expanded(size, L'\0');
        const DWORD length = ::ExpandEnvironmentStringsW(text.c_str(), expanded.data(), size);
        // The call counts its terminator.
        return length == 0 || length > size ? std::string() : fromWide(expanded.c_str());
    }
    [[nodiscard]] bool start(std::string_view path) override
    {
        const std::wstring program = toWide(withVariables(path));
        // Named apart from its command line, so that blanks in the path cannot make another program of it.
        std::wstring commandLine = L'"' + program + L'"';
        STARTUPINFOW look = {};
        look.cb = sizeof look;
        look.dwFlags = STARTF_USESHOWWINDOW;
        look.wShowWindow = SW_SHOWNORMAL;
        PROCESS_INFORMATION process = {};
        if (program.empty() || ::CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0,
                                                nullptr, nullptr, &look, &process) == 0) {
            return false;
        }
        const Handle ownedThread(process.hThread);
        const Handle ownedProcess(process.hProcess);
        return true;
    }
};

} // namespace

std::unique_ptr<StartProgram> makeStartProgram()
{
    return std::make_unique<WindowsStartProgram>();
}

} // namespace platform
