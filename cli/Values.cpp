#include "cli/Commands.h"
#include "cli/Reader.h"
#include "cli/Settings.h"
#include "cli/Writing.h"
#include "text/HexText.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace cli {

namespace {

Json jsonOf(const Values& values)
{
    Json list = Json::array();
    for (const auto& [address, value] : values) {
        list.push_back({{"address", address}, {"value", text::hexTwoDigits(value)}});
    }
    return list;
}

std::vector<std::string> addressesOf(const Values& values)
{
    std::vector<std::string> addresses;
    for (const auto& [address, value] : values) {
        addresses.push_back(address);
    }
    return addresses;
}

Exit tellDryRun(const Values& wanted, const Values& before, const Arguments& arguments, Console& console)
{
    const Exit exit = wanted == before ? Exit::Done : Exit::Different;
    Json list = Json::array();
    for (const auto& [address, value] : wanted) {
        const std::uint8_t old = before.at(address);
        const bool changes = old != value;
        console.print(address + ": " + text::hexTwoDigits(old) +
                      (changes ? " would become " + text::hexTwoDigits(value) : " as wanted"));
        list.push_back({{"address", address},
                        {"before", text::hexTwoDigits(old)},
                        {"wanted", text::hexTwoDigits(value)},
                        {"found", nullptr},
                        {"state", "not-written"}});
    }
    Json json = document(arguments, exit);
    json["dry_run"] = true;
    json["parameters"] = std::move(list);
    console.answer(json);
    return exit;
}

} // namespace

Exit get(const Arguments& arguments, Console& console)
{
    std::vector<std::string> addresses;
    for (const std::string& word : arguments.words) {
        addresses.push_back(readAddress(word, arguments.force));
    }
    Reader reader(arguments, console);
    reader.open();
    const Values values = reader.read(addresses);
    for (const std::string& address : addresses) {
        const std::string value = text::hexTwoDigits(values.at(address));
        console.print(addresses.size() == 1 ? value : address + "=" + value);
    }
    Json json = document(arguments, Exit::Done);
    json["parameters"] = jsonOf(values);
    console.answer(json);
    return Exit::Done;
}

Exit set(const Arguments& arguments, Console& console)
{
    const Values wanted = readSettings(arguments.words, arguments.force);
    Reader reader(arguments, console);
    reader.open();
    const Values before = reader.read(addressesOf(wanted));
    if (arguments.dryRun) {
        return tellDryRun(wanted, before, arguments, console);
    }
    const Writing writing = writeWithProof(reader, wanted, before, console);
    const Exit exit = exitOf(writing);
    for (const Written& parameter : writing.parameters) {
        if (parameter.state == Written::State::Proven) {
            console.print(parameter.address + "=" + text::hexTwoDigits(parameter.wanted));
        }
    }
    tellFailures(writing, console);
    Json json = document(arguments, exit);
    json["dry_run"] = false;
    json["parameters"] = jsonOf(writing);
    addCause(writing.cause, json);
    console.answer(json);
    return exit;
}

} // namespace cli
