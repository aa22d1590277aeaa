#pragma once

#include "tables/Parameters.h"
#include "tables/TableId.h"

#include <span>
#include <string_view>

// What the two parameter tables do not share, as data.
namespace tables {

enum class AddressMatch {
    Exact,       // the address is the whole index entry
    Containment, // the address occurs anywhere in it: "084" finds "083-084"
};

struct TableKind
{
    TableId id;
    std::string_view caption; // of the table's tab, without the changed mark
    AddressMatch match;
    bool ignoresEmptyValues;   // putting an empty text changes nothing
    bool resetRestoresCaption; // a reset takes the changed mark off the tab
    int firstEditableRow;      // current after a reset and after the marks were cleared
    std::span<const Parameter> defaults;
};

[[nodiscard]] const TableKind& configurationKind();
[[nodiscard]] const TableKind& keyboardLanguageKind();

} // namespace tables
