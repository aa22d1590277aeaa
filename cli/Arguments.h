#pragma once

#include "cli/Parameters.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace cli {

enum class Command { Info, Retrieve, Verify, Diff, Update, Get, Set, Summary, Show, TestRead, Doctor, Batch };

enum class When { Auto, Always, Never };

// What the user wrote behind "teslin". Values are checked as far as that needs neither file nor reader.
struct Arguments
{
    Command command = Command::Info;
    std::string commandName;

    // Of all commands.
    Tables tables;
    bool areTablesGiven = false;
    int port = 0; // 0: the driver is asked
    std::string driverName = "Teslin";
    std::filesystem::path dosDevices;
    int timeoutMilliseconds = 500;
    bool json = false;
    bool dryRun = false;
    bool quiet = false;
    bool verbose = false;
    When progress = When::Auto;
    When color = When::Auto;

    // Of some.
    std::vector<std::string> words; // files, addresses or settings, as the command has them
    std::vector<std::string> outputs;
    std::filesystem::path backupFolder;
    std::filesystem::path log;
    int count = 0; // of readers; 0: until there are no more
    bool noBackup = false;
    bool all = false;
    bool force = false;
    bool lenient = false;
    bool writableOnly = false;
};

// The command line cannot be understood, or asks for a text alone (help, version): what() goes to standard error or,
// if isAnswer, to standard output.
class ArgumentsEnd final : public std::runtime_error
{
public:
    ArgumentsEnd(const std::string& text, bool isAnswer)
        : std::runtime_error(text)
        , m_isAnswer(isAnswer)
    {}

    [[nodiscard]] bool isAnswer() const { return m_isAnswer; }

private:
    bool m_isAnswer;
};

// Throws ArgumentsEnd.
[[nodiscard]] Arguments parseArguments(int argc, const char* const* argv);

} // namespace cli
