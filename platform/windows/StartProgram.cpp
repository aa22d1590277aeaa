#include "platform/StartProgram.h"

#include "platform/windows/Handle.h"

#include <string>

namespace platform {

namespace {

// Empty when the text cannot be expanded.
std::string withVariables(const std::string& text)
{
    const DWORD size = ::ExpandEnvironmentStringsA(text.c_str(), nullptr, 0);
    std::string expanded(size, '\0');
    const DWORD length = ::ExpandEnvironmentStringsA(text.c_str(), expanded.data(), size);
    // The call counts its terminator and, in bytes, sometimes one more.
    return length == 0 || length > size ? std::string() : std::string(expanded.c_str());
}

class WindowsStartProgram final : public StartProgram
{
public:
    [[nodiscard]] bool start(std::string_view path) override
    {
        const std::string program = withVariables(std::string(path));
        // Named apart from its command line, so that blanks in the path cannot make another program of it.
        std::string commandLine = '"' + program + '"';
        STARTUPINFOA look = {};
        look.cb = sizeof look;
        look.dwFlags = STARTF_USESHOWWINDOW;
        look.wShowWindow = SW_SHOWNORMAL;
        PROCESS_INFORMATION process = {};
        if (program.empty() || ::CreateProcessA(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0,
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
