#pragma once

#include "tables/ParamRow.h"

#include <cstddef>
#include <string>
#include <vector>

namespace files {

// A table counts its rows in a byte; whatever a file holds beyond that is left out.
inline constexpr std::size_t kMostRows = 255;

// What a table file holds. Texts are bytes of the Windows-1252 code page as they stand in the file, unchecked: an
// address or a value need not be hexadecimal, a comment may hold any control character.
struct TableFile
{
    std::string comment;                // line breaks are CR LF
    std::vector<tables::ParamRow> rows; // at most kMostRows; the changed mark of a row that was read is empty
};

} // namespace files
