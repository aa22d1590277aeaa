#include "platform/TerminalKeys.h"

#include "platform/windows/Windows.h"

#include <array>

#include <io.h>

namespace platform {

namespace {

class WindowsTerminalKeys final : public TerminalKeys
{
public:
    WindowsTerminalKeys() = default;
    ~WindowsTerminalKeys() override
    {
        if (m_before) {
            ::SetConsoleMode(m_input, *m_before);
        }
    }

    [[nodiscard]] bool takeEveryKey() override
    {
        DWORD mode = 0;
        if (::GetConsoleMode(m_input, &mode) == 0 || ::SetConsoleMode(m_input, ENABLE_EXTENDED_FLAGS) == 0) {
            return false;
        }
        m_before = mode;
        return true;
    }

    [[nodiscard]] std::optional<std::string> read(std::chrono::milliseconds limit) override
    {
        DWORD mode = 0;
        const bool isConsole = ::GetConsoleMode(m_input, &mode) != 0;
        if (isConsole && ::WaitForSingleObject(m_input, static_cast<DWORD>(limit.count())) != WAIT_OBJECT_0) {
            return std::string();
        }
        return isConsole && m_before ? readKeys() : readBytes();
    }

private:
    // A console reports much that is no key.
    [[nodiscard]] std::string readKeys()
    {
        std::string text;
        DWORD waiting = 0;
        while (::GetNumberOfConsoleInputEvents(m_input, &waiting) != 0 && waiting > 0) {
            INPUT_RECORD record{};
            DWORD count = 0;
            if (::ReadConsoleInputW(m_input, &record, 1, &count) == 0 || count == 0) {
                break;
            }
            if (record.EventType == KEY_EVENT && record.Event.KeyEvent.bKeyDown != 0 &&
                record.Event.KeyEvent.uChar.UnicodeChar != 0) {
                append(text, record.Event.KeyEvent.uChar.UnicodeChar);
            }
        }
        return text;
    }

    static void append(std::string& text, wchar_t character)
    {
        std::array<char, 4> bytes{};
        const int count = ::WideCharToMultiByte(CP_UTF8, 0, &character, 1, bytes.data(), static_cast<int>(bytes.size()),
                                                nullptr, nullptr);
        text.append(bytes.data(), static_cast<std::size_t>(count));
    }

    [[nodiscard]] std::optional<std::string> readBytes() const
    {
        std::array<char, 1024> buffer{};
        DWORD count = 0;
        if (::ReadFile(m_input, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr) == 0 || count == 0) {
            return std::nullopt;
        }
        return std::string(buffer.data(), count);
    }

    HANDLE m_input = ::GetStdHandle(STD_INPUT_HANDLE);
    std::optional<DWORD> m_before;
};

} // namespace

bool isTerminal(Stream stream)
{
    return ::_isatty(static_cast<int>(stream)) != 0;
}

std::unique_ptr<TerminalKeys> makeTerminalKeys()
{
    return std::make_unique<WindowsTerminalKeys>();
}

} // namespace platform
