#pragma once

#include "tables/TableId.h"
#include "widgets/ElidedLabel.h"

#include <filesystem>

namespace app {

// The name of the file that was last loaded or saved for the table shown.
class FileNameLabel final : public widgets::ElidedLabel
{
    Q_OBJECT

public:
    explicit FileNameLabel(QWidget* parent = nullptr);

    // Hidden when there is no name, when it is only a pattern, and when it ends as the other table's files do.
    void showFor(tables::TableId table, const std::filesystem::path& name);
};

} // namespace app
