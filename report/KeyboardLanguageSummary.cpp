#include "report/KeyboardLanguageSummary.h"

#include "report/ReportText.h"
#include "report/SummaryFrame.h"
#include "text/HexText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

// The report from top to bottom: summary_KB() at the end of the file names its sections in their order, and each
// section writes its lines. The blanks in the texts are the columns of the report.
namespace report {

namespace {

using text::hexThreeDigits;

constexpr std::uint32_t kFlagsAddress = 0x080;
constexpr std::uint32_t kFirstKey = 0x083;
constexpr std::uint32_t kLastKey = 0x113;
constexpr std::uint32_t kLastAddress = 0x114;

// A pair's text is cut by length, not at its dash: of an odd cell the ends are shown.
std::string_view firstTwo(std::string_view entry)
{
    return entry.substr(0, 2);
}

std::string_view lastTwo(std::string_view entry)
{
    return entry.substr(entry.size() - std::min<std::size_t>(entry.size(), 2));
}

void writeComment(ReportText& report, const std::string& comment)
{
    report.line(comment); // an empty comment is an empty line here
}

// By bits 5 and 6 of the keyboard flags.
constexpr std::array<std::string_view, 4> kAltCodeModes = {
    "No Alt Codes",
    "Alt only if no scan codes in table",
    "Alt for all but fixed keys",
    "Alt for all keys",
};

void writeKeyboardFlags(ReportText& report, std::uint8_t flags)
{
    // "keyboad" is how the report has it.
    report.line({"     Keyboard Flags: [080] * ",
                 (flags & 0x01) != 0 ? "Use internal US keyboad scancodes" : "Use table stored in parameter area"});
    report.line({"                           * Uses ",
                 (flags & 0x10) != 0 ? "ANSI, ALT + '0' + ASCII Code" : "OEM, ALT + ASCII Code"});
    report.line({"                           * Uses ", kAltCodeModes[(flags & 0x60) >> 5]});
    report.line({"                           * Keyboard uses ", (flags & 0x80) != 0 ? "Caps Lock" : "Shift Lock"});
    report.emptyLine();
}

void writeKeyboardId(ReportText& report, const std::string& id)
{
    report.line({"                     [081][082] Keyboard ID#: ", firstTwo(id), lastTwo(id)});
    report.emptyLine();
}

// Kept behaviour kb-opposite-words: the editor has other words for these bits.
std::string shiftWords(std::uint8_t flags)
{
    std::string words;
    if ((flags & 0x80) != 0) {
        words += "[Caps Lock] ";
    }
    if ((flags & 0x40) != 0) {
        words += "[Ctrl] ";
    }
    if ((flags & 0x20) != 0) {
        words += "[AltGr] ";
    }
    if ((flags & 0x10) != 0) {
        words += "[Shift]";
    }
    return words.empty() ? "no shift flags" : words;
}

void writeKeys(ReportText& report, const TableAccess& table)
{
    report.line("Flag and scan codes:          (Flg / ScanCode)");
    for (std::uint32_t address = kFirstKey; address <= kLastKey; address += 2) {
        const std::string entry = table(text::hexThreeDigits(address));
        report.line({"                     [", text::hexThreeDigits(address), "][", text::hexThreeDigits(address + 1),
                     "] ", firstTwo(entry), " / ", lastTwo(entry),
                     "       uses: ", shiftWords(text::hexByte(firstTwo(entry)))});
    }
    report.emptyLine();
}

std::string dumpCell(const TableAccess& table, std::uint32_t address)
{
    if (address > kLastAddress) {
        return std::string(kUndefined);
    }
    std::string entry = table(text::hexThreeDigits(address));
    if (address == kFlagsAddress) {
        return entry;
    }
    const bool isFlagsOfAPair = address % 2 != 0;
    return std::string(isFlagsOfAPair ? firstTwo(entry) : lastTwo(entry));
}

void writeDump(ReportText& report, const TableAccess& table)
{
    report.line("Parameter table (all values in hex):");
    report.emptyLine();
    writeDumpRows(report, 0x080, 0x110, [&](std::uint32_t address) { return dumpCell(table, address); });
    report.emptyLine();
}

void writeNotes(ReportText& report)
{
    report.line("======");
    report.line("Note:");
    writeAddressNote(report);
    report.line("* \"**\" in the table above indicates a parameter that's not defined");
    report.emptyLine();
}

} // namespace

std::string summary_KB(const TableAccess& table, const SummaryFacts& facts)
{
    ReportText report;
    writeHeading(report, facts);
    report.line("Keyboard Language table");
    report.emptyLine();
    writeComment(report, facts.comment);
    writeKeyboardFlags(report, text::hexByte(table(text::hexThreeDigits(kFlagsAddress))));
    writeKeyboardId(report, table("081"));
    writeKeys(report, table);
    writeDump(report, table);
    writeNotes(report);
    return report.text();
}

} // namespace report
