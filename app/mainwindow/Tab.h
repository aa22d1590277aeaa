#pragma once

#include "tables/TableId.h"

#include <optional>

namespace app {

// The tabs of the main window, left to right.
enum Tab : int { kConfigurationTab = 0, kKeyboardLanguageTab = 1, kReadTestTab = 2 };

[[nodiscard]] constexpr Tab tabOf(tables::TableId table)
{
    return table == tables::TableId::Configuration ? kConfigurationTab : kKeyboardLanguageTab;
}

// The table on a tab; the read test has none.
[[nodiscard]] constexpr std::optional<tables::TableId> tableOn(int tab)
{
    switch (tab) {
    case kConfigurationTab:
        return tables::TableId::Configuration;
    case kKeyboardLanguageTab:
        return tables::TableId::KeyboardLanguage;
    default:
        return std::nullopt;
    }
}

} // namespace app
