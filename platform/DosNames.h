#pragma once

#include "platform/Result.h"

#include <filesystem>
#include <string_view>

namespace platform {

// The program speaks of devices, ports and the driver's files by their DOS names. On Windows these go to the system as
// they are. Elsewhere one folder maps them, the way a compatibility layer's folder of drives and devices does:
//
//     teslin   the device object \\.\Teslin (a terminal, or any file)
//     com5     the port COM5 (a terminal device)
//     c:       the folder that stands for drive C
//
// The folder is read afresh at each call, because a reader may be attached and its driver started at any time.
class DosNames final
{
public:
    // The folder need not exist: then no name is found. Windows needs no folder and ignores it.
    explicit DosNames(std::filesystem::path folder = defaultFolder());

    // The folder named by the environment variable TESLIN_DOSDEVICES, or else ~/.teslin/dosdevices. Empty when there is
    // neither, which finds nothing.
    [[nodiscard]] static std::filesystem::path defaultFolder();

    // The path to open for a DOS name (Windows-1252 text) in one of the three forms "\\.\NAME", "COM" and a number, or
    // a drive path such as "C:\Windows\system32\drivers\Teslin.sys". Names are looked up without regard to the case of
    // the letters A to Z, step by step; where several differ in case alone, the exact one is taken, else the lower-case
    // one. Missing names are not found (isNotFound()). A name of another form, with a slash, ".." or a NUL in it, or
    // with an empty step, is refused with another error. Nothing is ever created.
    [[nodiscard]] Result<std::filesystem::path> find(std::string_view dosName) const;

private:
    std::filesystem::path m_folder;
};

} // namespace platform
