#include "cli/Words.h"

#include "cli/ReportTable.h"
#include "cli/TableFiles.h"
#include "text/TextLines.h"

#include <optional>

namespace cli {

namespace {

// The report shows the value of one parameter on the line of another.
constexpr std::string_view kShownElsewhere = "01C";
constexpr std::string_view kWhereItIsShown = "029";

constexpr std::string_view kKeyboardFlags = "080";

std::string withSingleBlanks(std::string_view text)
{
    std::string words;
    for (const char c : text) {
        if (c != ' ' || (!words.empty() && words.back() != ' ')) {
            words += c;
        }
    }
    while (words.ends_with(' ')) {
        words.pop_back();
    }
    return words;
}

std::string_view withoutColumnTitle(std::string_view text)
{
    for (const std::string_view title : {"    Start Sentinel:", "    Start Sentinels:"}) {
        if (text.ends_with(title)) {
            text.remove_suffix(title.size());
        }
    }
    return text;
}

// What stands behind a tag, with the title of the line in front of it.
std::string segment(std::string_view line, std::size_t tag, std::size_t length, bool isPair)
{
    const std::string_view before = line.substr(0, tag);
    std::string_view text = line.substr(tag + length);
    if (isPair) {
        text.remove_prefix(std::min(text.size(), text.find(']') + 1)); // the tag of the second address
    } else {
        text = text.substr(0, text.find('['));
    }
    const bool hasTitle = before.find('[') == std::string_view::npos && before.ends_with(": ");
    return withSingleBlanks((hasTitle ? std::string(before) : std::string()) + std::string(withoutColumnTitle(text)));
}

Values tableWith(const Parameter& parameter, const Values& values)
{
    const bool isConfiguration = parameter.table == Table::Configuration;
    Values table = factoryValues({.configuration = isConfiguration, .keyboardLanguage = !isConfiguration});
    for (auto& [address, value] : table) {
        if (const auto given = values.find(address); given != values.end()) {
            value = given->second;
        }
    }
    if (parameter.address == kShownElsewhere) {
        table[std::string(kWhereItIsShown)] = table[parameter.address];
    }
    return table;
}

} // namespace

std::vector<std::string> wordsOf(const Parameter& parameter, const Values& values)
{
    const report::SummaryFacts facts{.date = std::chrono::year(2000) / 1 / 1};
    const std::string report = reportOf(parameter.table, tableOf(parameter.table, tableWith(parameter, values)), facts);
    const std::string tag = "[" + std::string(parameter.row.substr(0, 3)) + "]";
    const bool isPair = parameter.row.size() > 3;

    std::vector<std::string> words;
    text::TextLines lines(report);
    bool isFurtherFlag = false;
    while (const auto line = lines.next()) {
        const std::size_t at = line->find(tag);
        if (at != std::string_view::npos) {
            words.push_back(segment(*line, at, tag.size(), isPair));
            isFurtherFlag = parameter.address == kKeyboardFlags;
        } else if (isFurtherFlag && line->find(" * ") != std::string_view::npos) {
            words.push_back(withSingleBlanks(*line));
        } else {
            isFurtherFlag = false;
        }
    }
    return words;
}

} // namespace cli
