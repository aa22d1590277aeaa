#pragma once

#include "platform/SystemError.h"

#include <QtGlobal>

#include <cerrno>
#include <string>

// Failures as the system under the test tells them. Its own words are the system's affair where it has more than one
// set of them.
namespace testsupport {

#ifdef Q_OS_WIN
inline constexpr int kNoFolder = 3;
inline constexpr int kIsAFolder = 5;

inline std::string wordsOf(int number)
{
    return platform::systemError(number).description;
}
#else
inline constexpr int kNoFolder = ENOENT;
inline constexpr int kIsAFolder = EISDIR;

inline std::string wordsOf(int number)
{
    return number == kNoFolder ? "No such file or directory" : "Is a directory";
}
#endif

// As message boxes give the reason: "No such file or directory (error number: 2)."
inline std::string reasonOf(int number)
{
    return wordsOf(number) + " (error number: " + std::to_string(number) + ").";
}

} // namespace testsupport
