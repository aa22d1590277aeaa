#pragma once

#include "tables/TableId.h"

#include <filesystem>
#include <optional>

class QMimeData;

namespace app {

struct DroppedTableFile
{
    tables::TableId table; // whose table the file's extension names
    std::filesystem::path name;
};

// The one table file (.tlc or .txt, any case) that lies in what is dragged; nothing for anything else.
[[nodiscard]] std::optional<DroppedTableFile> droppedTableFile(const QMimeData& dragged);

} // namespace app
