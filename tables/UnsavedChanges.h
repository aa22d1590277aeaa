#pragma once

#include "tables/TableId.h"

namespace tables {

// Guards the edits that stand in a table and in no file yet.
class UnsavedChanges
{
public:
    virtual ~UnsavedChanges() = default;

    // Asks what to do with the unsaved changes of a table, if it has any; true = they may be given up. A Yes saves the
    // table first.
    [[nodiscard]] virtual bool CheckForUnsavedData(TableId table) = 0;
};

} // namespace tables
