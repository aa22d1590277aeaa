#include "app/mainwindow/UnsavedQuestion.h"

#include <string>

namespace app {

platform::BoxAnswer askToSaveChanges(platform::MessageBoxes& boxes, const tables::TableKind& table)
{
    const std::string caption(table.caption);
    return boxes.show({.text = caption + " table changed but not saved!\r\nDo you wish to save now?",
                       .title = caption,
                       .icon = platform::BoxIcon::Question,
                       .buttons = platform::BoxButtons::YesNoCancel,
                       .defaultButton = platform::BoxAnswer::Yes});
}

} // namespace app
