#include "tables/TableKind.h"

namespace tables {

const TableKind& configurationKind()
{
    static const TableKind kind{.id = TableId::Configuration,
                                .caption = "Configuration",
                                .match = AddressMatch::Exact,
                                .ignoresEmptyValues = false,
                                .resetRestoresCaption = false,
                                .firstEditableRow = 2,
                                .defaults = parameters_CFG()};
    return kind;
}

const TableKind& keyboardLanguageKind()
{
    static const TableKind kind{.id = TableId::KeyboardLanguage,
                                .caption = "Keyboard Language",
                                .match = AddressMatch::Containment,
                                .ignoresEmptyValues = true,
                                .resetRestoresCaption = true,
                                .firstEditableRow = 1,
                                .defaults = parameters_KB()};
    return kind;
}

} // namespace tables
