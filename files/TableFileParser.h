#pragma once

#include "files/TableFile.h"

#include <string_view>

// The two table file formats, read. Nothing in a file is an error: lines that do not fit are dropped or become empty
// rows, and rows beyond kMostRows are dropped. CR LF, LF alone and CR alone each end a line. The time needed is
// proportional to the number of bytes.
namespace files {

// A configuration file (*.tlc). The first line is always the comment, whatever it looks like: the text between its
// first comma and its second (or its end), with every byte above 127 turned into the one 128 below. A comment of more
// than 255 bytes in the file reads as empty, and so does a line without a comma. All further lines go to ParseLine_CFG.
[[nodiscard]] TableFile parseTableFile_CFG(std::string_view bytes);

// A keyboard language file (*.txt): every line goes to ParseLine_KB.
[[nodiscard]] TableFile parseTableFile_KB(std::string_view bytes);

// One line of a configuration file, without its line end. What follows a ";" at the very start is appended to the
// comment with a CR LF. Another line of at least six characters with a comma anywhere adds a row: characters 1 to 3 are
// the address, 5 and 6 the value, everything after a ";" at position 6 or later the notes. Any other line is dropped.
void ParseLine_CFG(std::string_view prm, TableFile& table);

// One line of a keyboard language file, without its line end. An empty line is ignored; what follows a ";" at the very
// start is appended to the comment with a CR LF. Of another line:
// - With at least six characters and a comma, characters 1 to 3 are the address and 5 and 6 the value. With more than
//   eight characters and a second comma it is a pair: "0FF,12,34" gives the address "0FF-100" and the value "12-34".
// - What follows the first ";" is the notes.
// - A row is added when there is no ";", even a row without address and value, or when the notes are not empty and
//   neither of the first two commas stands behind the ";". Any other line is dropped.
void ParseLine_KB(std::string_view prm, TableFile& table);

} // namespace files
