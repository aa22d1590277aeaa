#include "cli/ReportTable.h"

#include "report/ConfigurationSummary.h"
#include "report/KeyboardLanguageSummary.h"
#include "tables/ParamTable.h"

#include <memory>

namespace cli {

report::TableAccess accessTo(Table table, const files::TableFile& rows)
{
    const auto grid = std::make_shared<tables::ParamTable>(
        table == Table::Configuration ? tables::configurationKind() : tables::keyboardLanguageKind());
    grid->setRowCount(static_cast<int>(rows.rows.size()) + 1);
    int row = 0;
    for (const tables::ParamRow& content : rows.rows) {
        grid->SetGridItem(++row, content.address, content.value, content.notes);
    }
    grid->NumParms = static_cast<std::uint8_t>(row);
    return [grid](std::string_view address) {
        const std::optional<int> found = address.empty() ? std::nullopt : grid->find(address).row;
        return found ? grid->cell(*found, tables::kValueColumn) : std::string();
    };
}

std::string reportOf(Table table, const files::TableFile& rows, const report::SummaryFacts& facts)
{
    const report::TableAccess access = accessTo(table, rows);
    return table == Table::Configuration ? report::summary_CFG(access, facts) : report::summary_KB(access, facts);
}

} // namespace cli
