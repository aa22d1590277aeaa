#pragma once

#include <filesystem>
#include <string>

namespace platform {

struct FileDialogSetup
{
    std::filesystem::path folder; // where to start
    std::filesystem::path name;   // what to start from: a file, whose folder then counts, or a pattern such as "*.tlc"
    std::string filter;           // the only filter, with its pattern in brackets: "Teslin Config Files (*.tlc)"
};

// The system's file dialogs. Neither asks about overwriting nor adds an extension: the name comes back as it was
// chosen, empty when the dialog was left without a choice.
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;

    [[nodiscard]] virtual std::filesystem::path chooseFileToOpen(const FileDialogSetup& setup) = 0;
    [[nodiscard]] virtual std::filesystem::path chooseFileToSave(const FileDialogSetup& setup) = 0;
};

} // namespace platform
