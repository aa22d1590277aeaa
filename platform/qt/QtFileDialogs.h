#pragma once

#include "platform/FileDialogs.h"

namespace platform {

// File dialogs as real windows, over whichever window of the program is in front.
class QtFileDialogs final : public FileDialogs
{
public:
    [[nodiscard]] std::filesystem::path chooseFileToOpen(const FileDialogSetup& setup) override;
    [[nodiscard]] std::filesystem::path chooseFileToSave(const FileDialogSetup& setup) override;
};

} // namespace platform
