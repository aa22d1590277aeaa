#pragma once

#include "simulator/Verdict.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

// What ksd-simulator was asked to do.
struct CommandLine
{
    enum class Wish { Run, TypeCard, ListCards, ShowHelp, ShowVersion };

    Wish wish = Wish::Run;
    std::string dosDevices;      // the folder of DOS names
    std::string name = "teslin"; // the entry of the device object, lower case
    int port = 5;                // 1 to 256
    std::string memoryFile;      // empty: factory defaults
    std::string saveMemoryFile;  // empty: not saved
    std::string logFile;         // empty: no log file
    bool verbose = false;        // the log goes to standard error too
    std::vector<std::string> faults;
    std::string card; // the name of a sample card, when one is to be typed; by the reader of dosDevices or memoryFile

    // The entry of the port: "com5".
    [[nodiscard]] std::string portEntry() const { return "com" + std::to_string(port); }
};

// Reads the arguments behind the program's name; a value follows its option as the next argument or behind '='. Help
// and version win over whatever stands behind them. On a refusal commandLine is left as it was.
Verdict parseCommandLine(std::span<const std::string_view> arguments, CommandLine& commandLine);

// The text of --help.
[[nodiscard]] std::string helpText();

} // namespace simulator
