#include "cli/Commands.h"
#include "cli/LocalTime.h"
#include "cli/ReportTable.h"
#include "cli/Source.h"
#include "cli/Utf8.h"
#include "platform/ReplaceFile.h"

#include <nlohmann/json.hpp>

namespace cli {

namespace {

// The window closes a saved report with a line end of its own.
constexpr std::string_view kFileEnd = "\r\n";

struct Report
{
    Table table;
    std::string text;
};

std::vector<Report> reportsOfReader(const Arguments& arguments, Console& console)
{
    Reader reader(arguments, console);
    reader.open();
    const report::SummaryFacts facts{.firmwareVersion = reader.firmwareVersion(), .comment = {}, .date = today()};
    const Values values = reader.read(arguments.tables);
    std::vector<Report> reports;
    for (const Table table : {Table::Configuration, Table::KeyboardLanguage}) {
        if (arguments.tables.holds(table)) {
            reports.push_back({table, reportOf(table, tableOf(table, values), facts)});
        }
    }
    return reports;
}

std::vector<Report> reportsOf(const Source& source, const Arguments& arguments, Console& console)
{
    if (source.kind == Source::Kind::Reader) {
        return reportsOfReader(arguments, console);
    }
    if (source.kind == Source::Kind::File) {
        const TableContent& content = source.file->content;
        const report::SummaryFacts facts{.firmwareVersion = {}, .comment = content.rows.comment, .date = today()};
        return {{content.table, reportOf(content.table, content.rows, facts)}};
    }
    std::vector<Report> reports;
    for (const Table table : {Table::Configuration, Table::KeyboardLanguage}) {
        if (arguments.tables.holds(table)) {
            const report::SummaryFacts facts{.firmwareVersion = {}, .comment = {}, .date = today()};
            reports.push_back({table, reportOf(table, tableOf(table, factoryValues(arguments.tables)), facts)});
        }
    }
    return reports;
}

} // namespace

Exit summary(const Arguments& arguments, Console& console)
{
    const Source source = sourceOf(arguments.words.front(), arguments, console);
    if (!arguments.outputs.empty() && source.kind != Source::Kind::File && arguments.tables.configuration &&
        arguments.tables.keyboardLanguage) {
        throw Failure(Exit::Usage, "Which report goes into " + arguments.outputs.front() + "?",
                      "Say --table cfg or kb.");
    }
    const std::vector<Report> reports = reportsOf(source, arguments, console);
    std::string text;
    Json list = Json::array();
    for (const Report& report : reports) {
        text.append(report.text).append(kFileEnd);
        list.push_back({{"table", shortNameOf(report.table)}, {"report", toUtf8(report.text)}});
    }
    if (arguments.outputs.empty()) {
        console.printBytes(console.answersTerminal() ? toHarmlessUtf8(text) : text);
    } else if (!arguments.dryRun) {
        if (const auto written = platform::replaceFile(arguments.outputs.front(), text); !written) {
            throw Failure(Exit::File, arguments.outputs.front() + " cannot be written: " + written.error().description);
        }
    }
    Json json = document(arguments, Exit::Done);
    json["reports"] = std::move(list);
    console.answer(json);
    return Exit::Done;
}

} // namespace cli
