#pragma once

#include "tables/ParamRow.h"

#include <span>
#include <string>
#include <string_view>

// The two table file formats, written. Both are plain text in the Windows-1252 code page with lines ended by CR LF, one
// row a line in the order given; the changed marks are not written. A comment's line breaks are given as CR LF.
namespace files {

// A configuration file (*.tlc): "Comments," and the comment on one line, its control characters 00 to 1F as the byte of
// their code plus 128 (a line break is 8D 8A), then "001,0F ;notes" for each row, the ";" also when there are no notes.
[[nodiscard]] std::string writeTableFile_CFG(std::string_view comment, std::span<const tables::ParamRow> rows);

// A keyboard language file (*.txt): the comment behind a ";" unless it is empty, then "083,10,1E ;notes" for a pair (a
// value of more than two characters) and "080,01 ;notes" for any other row. A row without notes has no ";" and an empty
// line behind it.
//
// Only the first line of the comment is marked as a comment. A line break in it becomes two line ends, and the comment
// closes with a LF and a line end, so the reader takes the comment's later lines for rows.
[[nodiscard]] std::string writeTableFile_KB(std::string_view comment, std::span<const tables::ParamRow> rows);

} // namespace files
