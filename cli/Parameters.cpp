#include "cli/Parameters.h"

#include "tables/Parameters.h"
#include "text/HexText.h"
#include "text/PairValue.h"

#include <algorithm>

namespace cli {

namespace {

constexpr std::size_t kAddressLength = 3;

void add(std::vector<Parameter>& list, Table table, const tables::Parameter& row)
{
    const std::string_view address = row.address.substr(0, kAddressLength);
    list.push_back({.address = std::string(address),
                    .table = table,
                    .factory = text::hexByte(text::leftOf(row.value, 2)),
                    .isReadOnly = row.access == tables::Access::ReadOnly,
                    .row = row.address,
                    .notes = row.notes});
    if (row.address.size() > kAddressLength) {
        Parameter second = list.back();
        second.address = text::rightOf(row.address, kAddressLength);
        second.factory = text::hexByte(text::rightOf(row.value, 2));
        list.push_back(std::move(second));
    }
}

} // namespace

const std::vector<Parameter>& parameters()
{
    static const std::vector<Parameter> list = [] {
        std::vector<Parameter> all;
        for (const tables::Parameter& row : tables::parameters_CFG()) {
            add(all, Table::Configuration, row);
        }
        for (const tables::Parameter& row : tables::parameters_KB()) {
            add(all, Table::KeyboardLanguage, row);
        }
        return all;
    }();
    return list;
}

const Parameter* findParameter(std::string_view address)
{
    const auto found = std::ranges::lower_bound(
        parameters(), address, {}, [](const Parameter& parameter) { return std::string_view(parameter.address); });
    return found != parameters().end() && found->address == address ? &*found : nullptr;
}

Values factoryValues(Tables tables)
{
    Values values;
    for (const Parameter& parameter : parameters()) {
        if (tables.holds(parameter.table)) {
            values.emplace(parameter.address, parameter.factory);
        }
    }
    return values;
}

std::string_view nameOf(Table table)
{
    return table == Table::Configuration ? "Configuration" : "Keyboard Language";
}

std::string_view shortNameOf(Table table)
{
    return table == Table::Configuration ? "cfg" : "kb";
}

} // namespace cli
