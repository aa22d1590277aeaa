#pragma once

#include "report/ConfigurationSummary.h"
#include "tests/report/GoldenReport.h"
#include "tests/report/ScriptedTable.h"

// The Configuration summary as its tests make it: on the day that the golden reports bear, from the defaults or from
// the defaults with some values changed.
namespace configuration {

constexpr std::chrono::year_month_day kDay{std::chrono::year{2024}, std::chrono::month{3}, std::chrono::day{7}};

// The dump of the defaults, for tests that change some of its values.
constexpr auto kDump000 = "000 - ** 00 ** ** ** ** ** ** - ** ** ** ** ** ** ** ** ";
constexpr auto kDump010 = "010 - ** ** ** 95 63 40 21 2B - 23 26 12 32 00 00 00 00 ";
constexpr auto kDump020 = "020 - 00 00 0D 00 57 0D 00 4D - 57 0D 00 ** 00 00 ** ** ";

[[nodiscard]] inline QByteArray summary(const scripted::Rows& rows, const report::SummaryFacts& facts = {.date = kDay})
{
    return QByteArray::fromStdString(report::summary_CFG(scripted::configurationTable(rows), facts));
}

[[nodiscard]] inline QByteArray changedSummary(const scripted::Rows& values)
{
    return summary(scripted::withValues(scripted::defaults_CFG(), values));
}

[[nodiscard]] inline QByteArray changedGolden(const QList<golden::LineChange>& changes)
{
    return golden::withLines(golden::report("configuration-defaults"), changes);
}

[[nodiscard]] inline QByteArray twoDigits(int value)
{
    return QByteArray::number(value, 16).toUpper().rightJustified(2, '0');
}

} // namespace configuration
