#include "simulator/CommandLine.h"
#include "simulator/Driver.h"
#include "simulator/TypedCard.h"
#include "simulator/posix/Descriptor.h"
#include "simulator/posix/PostedValues.h"
#include "simulator/posix/SetupError.h"
#include "simulator/posix/Simulator.h"

#include <fcntl.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace simulator;

constexpr int kBadUsage = 2;

int refuseUsage(const std::string& reason)
{
    std::cerr << "ksd-simulator: " << reason << "\nTry 'ksd-simulator --help'.\n";
    return kBadUsage;
}

std::string contentOf(const std::string& file)
{
    std::string content;
    std::array<char, 4096> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read
    const Descriptor open(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (!open.isOpen()) {
        throw systemError("read " + file);
    }
    while (true) {
        const ssize_t count = ::read(open.get(), buffer.data(), buffer.size());
        if (count < 0) {
            throw systemError("read " + file);
        }
        if (count == 0) {
            return content;
        }
        content.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

void loadMemory(const std::string& file, ParameterMemory& memory)
{
    if (const Verdict verdict = memory.load(contentOf(file)); !verdict) {
        throw SetupError(file + ", " + verdict.error);
    }
}

void saveMemory(const std::string& file, const ParameterMemory& memory)
{
    std::ofstream stream(file, std::ios::binary);
    stream << memory.text() << std::flush;
    if (!stream) {
        throw systemError("write " + file);
    }
}

void simulate(const CommandLine& commandLine, Driver& driver)
{
    if (!commandLine.memoryFile.empty()) {
        loadMemory(commandLine.memoryFile, driver.reader().memory());
    }
    {
        Simulator running(commandLine, driver);
        std::cout << running.readyLine() << std::endl;
        running.run();
    }
    if (!commandLine.saveMemoryFile.empty()) {
        saveMemory(commandLine.saveMemoryFile, driver.reader().memory());
    }
}

void typeCard(const CommandLine& commandLine)
{
    ParameterMemory memory;
    std::string values = commandLine.memoryFile;
    if (!commandLine.dosDevices.empty()) {
        values = PostedValues::file(commandLine.dosDevices, commandLine.portEntry()).string();
        if (!std::filesystem::exists(values)) {
            throw SetupError("no simulated reader runs on " + commandLine.dosDevices);
        }
    }
    if (!values.empty()) {
        loadMemory(values, memory);
    }
    std::cout << typedCard(*findSampleCard(commandLine.card), memory);
}

void listCards()
{
    constexpr int kNameWidth = 12;
    for (const SampleCard& card : sampleCards()) {
        std::cout << std::left << std::setw(kNameWidth) << card.name << card.meaning << '\n';
    }
}

int runProgram(const std::vector<std::string_view>& arguments)
{
    CommandLine commandLine;
    if (const Verdict verdict = parseCommandLine(arguments, commandLine); !verdict) {
        return refuseUsage(verdict.error);
    }
    switch (commandLine.wish) {
    case CommandLine::Wish::ShowHelp:
        std::cout << helpText();
        return EXIT_SUCCESS;
    case CommandLine::Wish::ShowVersion:
        std::cout << "ksd-simulator " TESLIN_VERSION "\n";
        return EXIT_SUCCESS;
    case CommandLine::Wish::ListCards:
        listCards();
        return EXIT_SUCCESS;
    case CommandLine::Wish::TypeCard:
        typeCard(commandLine);
        return EXIT_SUCCESS;
    case CommandLine::Wish::Run:
        break;
    }
    Driver driver(commandLine.port);
    for (const std::string& rule : commandLine.faults) {
        if (const Verdict verdict = driver.faults().add(rule); !verdict) {
            return refuseUsage("fault rule '" + rule + "': " + verdict.error);
        }
    }
    simulate(commandLine, driver);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char* argv[])
{
    try {
        return runProgram({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::cerr << "ksd-simulator: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
