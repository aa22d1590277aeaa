#include "platform/qt/QtFileDialogs.h"

#include "platform/qt/AnsiText.h"
#include "platform/qt/FrontWindow.h"

#include <QFileDialog>
#include <QFileInfo>

namespace platform {

namespace {

QString toName(const std::filesystem::path& path)
{
    return QFileInfo(path).filePath();
}

std::filesystem::path choose(QFileDialog::AcceptMode mode, const FileDialogSetup& setup)
{
    QFileDialog dialog(frontWindow());
    dialog.setObjectName(QStringLiteral("fileDialog"));
    comeUpAboveParent(dialog);
    dialog.setAcceptMode(mode);
    // Any name is taken, that of a missing file too: what a name is good for is the caller's to find out and to tell.
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
#ifndef Q_OS_WIN
    // The dialogs of desktops ask about overwriting whatever they are told.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
#endif
    dialog.setNameFilter(toQString(setup.filter));
    if (!setup.folder.empty()) {
        dialog.setDirectory(toName(setup.folder));
    }
    dialog.selectFile(toName(setup.name));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    return QFileInfo(dialog.selectedFiles().constFirst()).filesystemFilePath().make_preferred();
}

} // namespace

std::filesystem::path QtFileDialogs::chooseFileToOpen(const FileDialogSetup& setup)
{
    return choose(QFileDialog::AcceptOpen, setup);
}

std::filesystem::path QtFileDialogs::chooseFileToSave(const FileDialogSetup& setup)
{
    return choose(QFileDialog::AcceptSave, setup);
}

} // namespace platform
