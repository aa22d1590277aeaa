#include "report/ConfigurationSummary.h"

#include "report/ReportText.h"
#include "report/SummaryFrame.h"
#include "tables/Parameters.h"
#include "text/HexText.h"

#include <array>
#include <cstddef>
#include <cstdint>

// The report from top to bottom: summary_CFG() at the end of the file names its sections in their order, and each
// section writes its lines. The blanks in the texts are the columns of the report.
namespace report {

namespace {

using text::hexTwoDigits;

// The table read as numbers.
class ParameterBytes final
{
public:
    explicit ParameterBytes(const TableAccess& table)
        : m_table(table)
    {}

    [[nodiscard]] std::uint8_t operator()(std::string_view address) const { return text::hexByte(m_table(address)); }

private:
    const TableAccess& m_table;
};

std::string character(std::uint8_t code)
{
    return {static_cast<char>(code)};
}

std::string codeOrNotUsed(std::uint8_t code)
{
    return code == 0 ? "(n/u)" : text::hexTwoDigits(code) + "h";
}

// The reader counts its delays in units of 0.512 ms. Shown with one decimal; no byte falls on the middle between two.
std::string milliseconds(std::uint8_t units)
{
    constexpr std::size_t kWidth = 10;
    const unsigned tenths = (units * 512U + 50U) / 100U;
    return rightAligned(std::to_string(tenths / 10) + "." + std::to_string(tenths % 10), kWidth);
}

std::string_view sendOrNot(bool isSent)
{
    return isSent ? "Send" : "Don't send";
}

void writeParameterId(ReportText& report, const ParameterBytes& val)
{
    report.line({"                     [001] Parameter ID#: ", text::hexTwoDigits(val("001") & 0x7F), " (",
                 (val("001") & 0x80) != 0 ? "modified" : "unmodified", ")"});
    report.emptyLine();
}

void writeComment(ReportText& report, const std::string& comment)
{
    if (!comment.empty()) {
        report.line(comment);
    }
}

void writeNumbers(ReportText& report, const ParameterBytes& val)
{
    report.line({"                     [014] Send numbers as ",
                 (val("014") & 0x08) != 0 ? "Numeric Keypad" : "Top Of Keyboard"});
    report.emptyLine();
}

void writeTableId(ReportText& report, const ParameterBytes& val)
{
    report.line({" Parameter ID Table: [02C] Table ID#:    ", text::hexTwoDigits(val("02C")), "h"});
    report.line({"                     [02D] Table Ver. #: ", text::hexTwoDigits(val("02D")), "h"});
    report.emptyLine();
}

void writeCommandValues(ReportText& report, const ParameterBytes& val)
{
    report.line({"     Command values: [022] Send Terminating Char: ",
                 (val("022") & 0x80) != 0 ? "after each track" : "after each card data"});
    report.line({"                     [022] Terminating Char:      ", text::hexTwoDigits(val("022") & 0x7F), "h"});
    report.line({"                     [024] Prefix Char:           '", character(val("024")), "'"});
    report.line({"                     [027] Prefix:                '", character(val("027")), "'"});
    report.line({"                     [028] Device ID:             '", character(val("028")), "'"});
    report.line({"                     [029] Terminator:            ", text::hexTwoDigits(val("029")), "h"});
    report.emptyLine();
}

void writeCardData(ReportText& report, const ParameterBytes& val)
{
    // Kept behaviour kb-line-01c:
    // The line tagged 01C shows the value of 029, as the report has it; the dump shows the true 01C.
    report.line({"       PreCard Data: [01C] Code:      ", codeOrNotUsed(val("029"))});
    report.line({"                     [01D] Character: ", codeOrNotUsed(val("01D"))});
    report.line({"      PostCard Data: [01E] Character: ", codeOrNotUsed(val("01E"))});
    report.line({"                     [01F] Code:      ", codeOrNotUsed(val("01F"))});
    report.emptyLine();
}

void writeCharacterDelays(ReportText& report, const ParameterBytes& val)
{
    report.line({"   Character Delays: [01A] Output:  ", milliseconds(val("01A")), " milliseconds"});
    report.line({"                     [01B] Special: ", milliseconds(val("01B")), " milliseconds"});
    report.emptyLine();
}

void writeResponseData(ReportText& report, const ParameterBytes& val)
{
    report.line({"   PreResponse Data: [023] Code Value: ", codeOrNotUsed(val("023"))});
    report.emptyLine();
    report.line({"  PostResponse Data: [025] Char Value: ", codeOrNotUsed(val("025"))});
    report.line({"                     [026] Code:       ", codeOrNotUsed(val("026"))});
    report.emptyLine();
}

void writeTrackCharacters(ReportText& report, const ParameterBytes& val)
{
    report.line({" PreTrack Character: [020]             ", codeOrNotUsed(val("020"))});
    report.emptyLine();
    report.line({"PostTrack Character: [021]             ", codeOrNotUsed(val("021"))});
    report.emptyLine();
}

void writeTrackConfiguration(ReportText& report, const ParameterBytes& val)
{
    report.line(
        {"Track Configuration: [013] reads ", (val("013") & 0x80) != 0 ? "AAMVA/CADL/ISO/ABA" : "ISO/ABA", " cards"});
    report.line(
        {"                     [014] ", sendOrNot((val("014") & 0x40) != 0), " Start Sentinel with each track"});
    report.line({"                     [014] ", sendOrNot((val("014") & 0x20) != 0), " End Sentinel with each track"});
    report.line({"                     [014] ", sendOrNot((val("014") & 0x10) != 0), " LRC with each track"});
    report.line({"                     [014] Send data as ", (val("014") & 0x04) != 0 ? "Lowercase" : "Uppercase"});
    report.emptyLine();
}

// A track's two-bit state in words, by the bits' number.
using StateWords = std::array<std::string_view, 4>;
constexpr StateWords kTrack1States = {"Disabled        ", "Enabled         ", "Enabled/Required", "unknown         "};
constexpr StateWords kTrack2States = {"Disabled        ", "Enabled         ", "Enabled/Required",
                                      "unknown        "}; // one blank less than the others
constexpr StateWords kTrack3States = kTrack1States;

// The track that the reader reports tracks 1, 2 and 3 as, by the mapping number; 6 and 7 are no mapping.
using MappedTracks = std::array<std::string_view, 3>;
constexpr std::array<MappedTracks, 8> kTrackMappings = {{
    {"1", "2", "3"},
    {"3", "2", "1"},
    {"2", "1", "3"},
    {"1", "3", "2"},
    {"2", "3", "1"},
    {"3", "1", "2"},
    {"", "", ""},
    {"", "", ""},
}};

std::string_view mappedTrack(const ParameterBytes& val, std::size_t track)
{
    return kTrackMappings[val("02A") & 0x07][track - 1];
}

void writeTracks(ReportText& report, const ParameterBytes& val)
{
    report.line({"            Track 1: [013] ", kTrack1States[val("013") & 0x03]});
    report.line({"                     [02A] Map to Track ", mappedTrack(val, 1)});
    report.emptyLine();
    report.line({"            Track 2: [013] ", kTrack2States[(val("013") & 0x0C) >> 2], "    Start Sentinel:"});
    report.line({"                     [02A] Map to Track ", mappedTrack(val, 2), "      [015] '",
                 character(val("015")), "' (7-bit)"});
    report.emptyLine();
    report.line({"            Track 3: [013] ", kTrack3States[(val("013") & 0x30) >> 4], "    Start Sentinels:"});
    report.line({"                     [02A] Map to Track ", mappedTrack(val, 3), "      [016] '",
                 character(val("016")), "' (CA DL)"});
    report.line({"                                               [017] '", character(val("017")), "' (ISO/ABA)"});
    report.line({"                                               [018] '", character(val("018")), "' (AAMVA)"});
    report.line({"                                               [019] '", character(val("019")), "' (7-bit)"});
    report.emptyLine();
}

void writeDump(ReportText& report, const TableAccess& table)
{
    report.line("Parameter table (all values in hex):");
    writeDumpRows(report, 0x000, 0x020, [&](std::uint32_t address) {
        const std::string text = text::hexThreeDigits(address);
        return tables::isParameter_CFG(text) ? table(text) : std::string(kUndefined);
    });
    report.emptyLine();
}

void writeNotes(ReportText& report)
{
    report.line("======");
    report.line("Notes:");
    writeAddressNote(report);
    report.line("* An 'h' following a number indicates a hex value.");
    report.line("* (n/u) indicates the value is Not Used because it is set to 00h");
}

} // namespace

std::string summary_CFG(const TableAccess& table, const SummaryFacts& facts)
{
    const ParameterBytes val(table);
    ReportText report;
    writeHeading(report, facts);
    report.line("Configuration table");
    report.emptyLine();
    writeParameterId(report, val);
    writeComment(report, facts.comment);
    writeNumbers(report, val);
    writeTableId(report, val);
    writeCommandValues(report, val);
    writeCardData(report, val);
    writeCharacterDelays(report, val);
    writeResponseData(report, val);
    writeTrackCharacters(report, val);
    writeTrackConfiguration(report, val);
    writeTracks(report, val);
    writeDump(report, table);
    writeNotes(report);
    return report.text();
}

} // namespace report
