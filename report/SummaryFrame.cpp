#include "report/SummaryFrame.h"

#include "text/HexText.h"

namespace report {

namespace {

std::string paddedWithZeros(const std::string& digits, std::size_t width)
{
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

// Month, day and year, whatever the system's own order is.
std::string dateText(std::chrono::year_month_day date)
{
    return paddedWithZeros(std::to_string(static_cast<unsigned>(date.month())), 2) + "/" +
           paddedWithZeros(std::to_string(static_cast<unsigned>(date.day())), 2) + "/" +
           paddedWithZeros(std::to_string(static_cast<int>(date.year())), 4);
}

} // namespace

std::string rightAligned(std::string_view text, std::size_t width)
{
    const std::size_t blanks = text.size() < width ? width - text.size() : 0;
    return std::string(blanks, ' ').append(text);
}

void writeHeading(ReportText& report, const SummaryFacts& facts)
{
    constexpr std::size_t kTitleWidth = 54;
    // Kept behaviour kb-summary-details: no blank before the date.
    report.line({rightAligned("Brennic Teslin " + facts.firmwareVersion, kTitleWidth), dateText(facts.date)});
}

void writeDumpRows(ReportText& report, std::uint32_t firstRow, std::uint32_t lastRow,
                   const std::function<std::string(std::uint32_t address)>& cell)
{
    constexpr std::uint32_t kColumns = 16;
    for (std::uint32_t row = firstRow; row <= lastRow; row += kColumns) {
        std::string cells;
        for (std::uint32_t column = 0; column < kColumns; ++column) {
            if (column == kColumns / 2) {
                cells += "- ";
            }
            cells += cell(row + column) + " ";
        }
        report.line({text::hexThreeDigits(row), " - ", cells});
    }
}

void writeAddressNote(ReportText& report)
{
    report.line("* Numbers in the square brackets [] indicate the parameter");
    report.line("  address for that value.");
}

} // namespace report
