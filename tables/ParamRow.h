#pragma once

#include <string>

namespace tables {

// One data row of a parameter table, all text. A row has no number of its own: numbers are made from the value text and
// turned back into it by whoever needs them.
struct ParamRow
{
    std::string changed; // "XXX" changed, " " unchanged, empty right after a reset
    std::string address;
    std::string value;
    std::string notes;
};

} // namespace tables
