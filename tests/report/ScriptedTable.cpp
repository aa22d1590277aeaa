#include "tests/report/ScriptedTable.h"

#include "tables/Parameters.h"

#include <QtGlobal>

#include <algorithm>
#include <span>
#include <string_view>

namespace scripted {

namespace {

Rows rowsOf(std::span<const tables::Parameter> defaults)
{
    Rows rows;
    for (const tables::Parameter& row : defaults) {
        rows.push_back({std::string(row.address), std::string(row.value)});
    }
    return rows;
}

template <typename Match>
report::TableAccess table(Rows rows, Match matches)
{
    return [rows = std::move(rows), matches](std::string_view address) {
        const auto row = std::ranges::find_if(rows, [&](const Row& r) { return matches(r.address, address); });
        return row == rows.end() ? std::string() : row->value;
    };
}

} // namespace

report::TableAccess configurationTable(Rows rows)
{
    return table(std::move(rows), [](std::string_view held, std::string_view asked) { return held == asked; });
}

report::TableAccess keyboardTable(Rows rows)
{
    return table(std::move(rows), [](std::string_view held, std::string_view asked) {
        return held.find(asked) != std::string_view::npos;
    });
}

Rows defaults_CFG()
{
    return rowsOf(tables::parameters_CFG());
}

Rows defaults_KB()
{
    return rowsOf(tables::parameters_KB());
}

Rows filledWith(Rows rows, const std::string& twoDigits)
{
    const std::string pair = twoDigits + "-" + twoDigits;
    for (Row& row : rows) {
        row.value = row.address.find('-') == std::string::npos ? twoDigits : pair;
    }
    return rows;
}

Rows withValues(Rows rows, const Rows& values)
{
    for (const Row& wanted : values) {
        const auto row = std::ranges::find(rows, wanted.address, &Row::address);
        if (row == rows.end()) {
            qFatal("no row has the address %s", wanted.address.c_str());
        }
        row->value = wanted.value;
    }
    return rows;
}

} // namespace scripted
