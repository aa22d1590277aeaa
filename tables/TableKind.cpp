#include "tables/TableKind.h"

namespace tables {

const TableKind& configurationKind()
{
    static const TableKind kind{.caption = "Configuration",
                                .match = AddressMatch::Exact,
                                .ignoresEmptyValues = false,
                                .resetRestoresCaption = false,
                                .firstEditableRow = 2,
                                .defaults = defaultRows_CFG()};
    return kind;
}

const TableKind& keyboardLanguageKind()
{
    static const TableKind kind{.caption = "Keyboard Language",
                                .match = AddressMatch::Containment,
                                .ignoresEmptyValues = true,
                                .resetRestoresCaption = true,
                                .firstEditableRow = 1,
                                .defaults = defaultRows_KB()};
    return kind;
}

} // namespace tables
