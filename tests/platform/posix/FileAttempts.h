#pragma once

#include "platform/ReplaceFile.h"

#include <QByteArray>
#include <QtGlobal>

#include <filesystem>
#include <string>

#include <sys/stat.h>

// Attempts at files whose outcome is a text that a test can compare, from a child process too.
namespace test {

// "ok", or what the system said.
inline QByteArray outcome(const platform::Result<void>& result)
{
    return result ? QByteArray("ok") : QByteArray::fromStdString(result.error().description);
}

inline QByteArray replace(const std::filesystem::path& path, const QByteArray& bytes)
{
    return outcome(platform::replaceFile(path, bytes.toStdString()));
}

inline QByteArray read(const std::filesystem::path& path)
{
    const platform::Result<std::string> bytes = platform::readFile(path);
    return bytes ? QByteArray::fromStdString(bytes.value())
                 : "(" + QByteArray::fromStdString(bytes.error().description) + ")";
}

inline struct stat lookAt(const std::filesystem::path& path)
{
    struct stat look = {};
    if (::stat(path.c_str(), &look) != 0) {
        qFatal("no file %s", path.c_str());
    }
    return look;
}

inline mode_t modeOf(const std::filesystem::path& path)
{
    return lookAt(path).st_mode & 07777;
}

inline void setMode(const std::filesystem::path& path, mode_t mode)
{
    if (::chmod(path.c_str(), mode) != 0) {
        qFatal("cannot change the mode of %s", path.c_str());
    }
}

} // namespace test
