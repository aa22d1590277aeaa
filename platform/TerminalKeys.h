#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

// The terminal a program without windows runs on.
namespace platform {

enum class Stream { Input, Output, Errors };
[[nodiscard]] bool isTerminal(Stream stream);

// What comes in through the standard input, taken as soon as it is there.
class TerminalKeys
{
public:
    virtual ~TerminalKeys() = default;
    TerminalKeys(const TerminalKeys&) = delete;
    TerminalKeys& operator=(const TerminalKeys&) = delete;

    // From now on and until this object ends every key comes at once and as it is, Ctrl+C too, and the terminal shows
    // nothing by itself. False when the input is no terminal.
    [[nodiscard]] virtual bool takeEveryKey() = 0;

    // The bytes that are there or come within the limit, in UTF-8; empty when none came, nothing at the end of the
    // input.
    [[nodiscard]] virtual std::optional<std::string> read(std::chrono::milliseconds limit) = 0;

protected:
    TerminalKeys() = default;
};

[[nodiscard]] std::unique_ptr<TerminalKeys> makeTerminalKeys();

} // namespace platform
