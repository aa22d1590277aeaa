#pragma once

#include "platform/MessageBoxes.h"
#include "tables/TableKind.h"

namespace app {

// Asks whether a table's unsaved changes are to be saved: Yes, No, or Cancel for what the user was about to do.
[[nodiscard]] platform::BoxAnswer askToSaveChanges(platform::MessageBoxes& boxes, const tables::TableKind& table);

} // namespace app
