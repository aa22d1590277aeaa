#pragma once

namespace tables {

// The reader's two tables.
enum class TableId { Configuration, KeyboardLanguage };

} // namespace tables
