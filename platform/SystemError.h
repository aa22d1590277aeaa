#pragma once

#include <string>

namespace platform {

// What the operating system said about a call that failed, in the form in which message boxes show it.
struct SystemError
{
    int number = 0;          // the system's own number (errno; GetLastError on Windows)
    std::string description; // its English text, without a full stop or line end
};

// The error with the given number.
[[nodiscard]] SystemError systemError(int number);

// The error of the call that has just failed. Nothing may stand between the two: a successful call may overwrite the
// system's note of the last failure.
[[nodiscard]] SystemError lastSystemError();

// True when the error says that there is no such file or folder, as opposed to one that may not be used.
[[nodiscard]] bool isNotFound(const SystemError& error);

} // namespace platform
