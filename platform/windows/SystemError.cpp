#include "platform/SystemError.h"

#include "platform/windows/WideText.h"
#include "platform/windows/Windows.h"

#include <array>

namespace platform {

namespace {

constexpr std::wstring_view kEnds = L".\r\n ";

// The message in one language; empty when the system does not have it.
std::wstring messageIn(DWORD language, DWORD number)
{
    constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    std::array<wchar_t, 1024> text{};
    const DWORD length =
        ::FormatMessageW(kFlags, nullptr, number, language, text.data(), static_cast<DWORD>(text.size()), nullptr);
    const std::wstring_view message(text.data(), length);
    return std::wstring(message.substr(0, message.find_last_not_of(kEnds) + 1));
}

} // namespace

SystemError systemError(int number)
{
    // The program speaks English; a system of another language may lack the English texts.
    constexpr DWORD kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    const auto code = static_cast<DWORD>(number);
    std::wstring message = messageIn(kEnglish, code);
    if (message.empty()) {
        message = messageIn(0, code);
    }
    return {number, message.empty() ? "Unknown error " + std::to_string(code) : fromWide(message)};
}

SystemError lastSystemError()
{
    return systemError(static_cast<int>(::GetLastError()));
}

bool isNotFound(const SystemError& error)
{
    return error.number == ERROR_FILE_NOT_FOUND || error.number == ERROR_PATH_NOT_FOUND;
}

} // namespace platform
