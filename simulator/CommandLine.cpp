#include "simulator/CommandLine.h"

#include "simulator/SampleCards.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <set>
#include <utility>

namespace simulator {

namespace {

constexpr int kHighestPort = 256;

struct Option
{
    std::string_view name;
    std::string CommandLine::*text; // for the options whose value is taken as it comes
};

constexpr std::array<Option, 4> kTextOptions = {{
    {"--dosdevices", &CommandLine::dosDevices},
    {"--memory", &CommandLine::memoryFile},
    {"--save-memory", &CommandLine::saveMemoryFile},
    {"--log", &CommandLine::logFile},
}};

bool takesValue(std::string_view option)
{
    return option == "--name" || option == "--port" || option == "--fault" || option == "--type-card" ||
           std::ranges::find(kTextOptions, option, &Option::name) != kTextOptions.end();
}

Verdict readPort(std::string_view value, int& port)
{
    int read = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), read);
    if (error != std::errc{} || end != value.data() + value.size() || read < 1 || read > kHighestPort) {
        return {"--port wants a number from 1 to 256"};
    }
    port = read;
    return {};
}

// A DOS name is looked up as an entry of a folder, so it must not lead out of it.
Verdict readName(std::string_view value, std::string& name)
{
    const bool isPlain =
        std::ranges::all_of(value, [](char c) { return c > ' ' && c != '/' && c != '\\' && c != ':' && c != '\x7F'; });
    if (value.empty() || !isPlain || value.front() == '.') {
        return {"--name wants a plain name without blanks, slashes, colons or a dot in front"};
    }
    name = value;
    std::ranges::transform(name, name.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return {};
}

Verdict readCard(std::string_view value, CommandLine& read)
{
    if (value == "list") {
        read.wish = CommandLine::Wish::ListCards;
        return {};
    }
    if (findSampleCard(value) == nullptr) {
        return {"no sample card '" + std::string(value) + "'; --type-card list names them"};
    }
    read.wish = CommandLine::Wish::TypeCard;
    read.card = value;
    return {};
}

Verdict readValue(std::string_view option, std::string_view value, CommandLine& read)
{
    if (option == "--port") {
        return readPort(value, read.port);
    }
    if (option == "--name") {
        return readName(value, read.name);
    }
    if (option == "--type-card") {
        return readCard(value, read);
    }
    if (option == "--fault") {
        read.faults.emplace_back(value);
        return {};
    }
    if (value.empty()) {
        return {std::string(option) + " wants a value that is not empty"};
    }
    read.*std::ranges::find(kTextOptions, option, &Option::name)->text = value;
    return {};
}

// Takes one option, and its value where it has one, off the front of the arguments.
Verdict takeOption(std::span<const std::string_view>& arguments, std::set<std::string_view>& seen, CommandLine& read)
{
    const std::string_view argument = arguments.front();
    const std::string_view option = argument.substr(0, argument.find('='));
    arguments = arguments.subspan(1);
    if (!takesValue(option)) {
        if (argument != "--verbose") {
            return {"unknown argument '" + std::string(argument) + "'"};
        }
        read.verbose = true;
        return {};
    }
    if (!seen.insert(option).second && option != "--fault") {
        return {std::string(option) + " is given twice"};
    }
    if (option.size() < argument.size()) {
        return readValue(option, argument.substr(option.size() + 1), read);
    }
    if (arguments.empty() || arguments.front().starts_with("--")) {
        return {std::string(option) + " wants a value"};
    }
    const std::string_view value = arguments.front();
    arguments = arguments.subspan(1);
    return readValue(option, value, read);
}

} // namespace

Verdict parseCommandLine(std::span<const std::string_view> arguments, CommandLine& commandLine)
{
    CommandLine read;
    std::set<std::string_view> seen;
    while (!arguments.empty()) {
        if (arguments.front() == "--help" || arguments.front() == "--version") {
            read.wish = arguments.front() == "--help" ? CommandLine::Wish::ShowHelp : CommandLine::Wish::ShowVersion;
            commandLine = std::move(read);
            return {};
        }
        if (Verdict verdict = takeOption(arguments, seen, read); !verdict) {
            return verdict;
        }
    }
    if (read.wish == CommandLine::Wish::TypeCard && !read.dosDevices.empty() && !read.memoryFile.empty()) {
        return {"--dosdevices and --memory name two readers for one card"};
    }
    if (read.wish != CommandLine::Wish::Run) {
        commandLine = std::move(read);
        return {};
    }
    if (read.dosDevices.empty()) {
        return {"--dosdevices is missing"};
    }
    if (read.name == read.portEntry()) {
        return {"--name and --port mean the same entry '" + read.name + "'"};
    }
    commandLine = std::move(read);
    return {};
}

} // namespace simulator
