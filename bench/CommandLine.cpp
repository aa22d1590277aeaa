#include "tables/Parameters.h"
#include "text/PairValue.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

// How fast and how large teslin is, on the simulated reader.
//
//     command-line-bench BIN_FOLDER
//
// What the reader alone needs is measured by a client that does nothing but ask: it writes a command, takes the line
// that comes, and writes the next. Both are measured by the clock of the reader's log, from the first command to the
// last reply, in turns, and the median counts, so that a machine with other work to do does not decide. Exit status 1
// when one of the limits is not kept.
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 15;
constexpr int kPatience = 30'000; // milliseconds, for anything

constexpr double kMostForReading = 1.3; // times what the reader alone needs
constexpr double kMostForWriting = 2.2; // times the same: each parameter is written and read back
constexpr double kLongestReading = 20;  // milliseconds, of the whole program
constexpr double kLongestVersion = 10;
constexpr double kMostMemory = 6.0 * 1024; // KiB that are this program's own share
constexpr double kMostBytes = 1024.0 * 1024;

[[noreturn]] void fail(const std::string& why)
{
    std::fprintf(stderr, "%s\n", why.c_str());
    std::exit(1);
}

struct Process
{
    pid_t id = 0;
    int output = -1;
};

// Starts a program whose standard output is read here, or thrown away.
Process start(const std::vector<std::string>& line, bool isRead)
{
    std::vector<char*> words;
    words.reserve(line.size() + 1);
    for (const std::string& word : line) {
        words.push_back(const_cast<char*>(word.c_str()));
    }
    words.push_back(nullptr);
    std::array<int, 2> pipe{-1, -1};
    if (isRead && ::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        fail("no pipe");
    }
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    if (isRead) {
        ::posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
    } else {
        ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    Process process;
    if (::posix_spawn(&process.id, words.front(), &actions, nullptr, words.data(), environ) != 0) {
        fail("cannot start " + line.front());
    }
    ::posix_spawn_file_actions_destroy(&actions);
    if (isRead) {
        ::close(pipe[1]);
        process.output = pipe[0];
    }
    return process;
}

int end(const Process& process)
{
    int status = 0;
    ::waitpid(process.id, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Runs a program to its end, which has to be a good one; gives the milliseconds that it took.
double run(const std::vector<std::string>& line)
{
    const Clock::time_point before = Clock::now();
    if (const int status = end(start(line, false)); status != 0) {
        fail(line.front() + " ended with " + std::to_string(status));
    }
    return std::chrono::duration<double, std::milli>(Clock::now() - before).count();
}

void waitForInput(int descriptor)
{
    pollfd input{descriptor, POLLIN, 0};
    if (::poll(&input, 1, kPatience) <= 0) {
        fail("nothing came");
    }
}

// The simulated reader, in a folder of its own.
class Reader final
{
public:
    explicit Reader(const fs::path& bin, const std::vector<std::string>& faults = {})
    {
        std::string folder = (fs::temp_directory_path() / "command-line-bench-XXXXXX").string();
        if (::mkdtemp(folder.data()) == nullptr) {
            fail("no folder");
        }
        m_folder = folder;
        std::vector<std::string> line = {bin / "ksd-simulator", "--dosdevices", names(), "--log", log()};
        for (const std::string& fault : faults) {
            line.insert(line.end(), {"--fault", fault});
        }
        m_process = start(line, true);
        waitForInput(m_process.output); // its ready line
    }
    ~Reader()
    {
        ::kill(m_process.id, SIGTERM);
        end(m_process);
        ::close(m_process.output);
        std::error_code ignored;
        fs::remove_all(m_folder, ignored);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    [[nodiscard]] std::string names() const { return m_folder / "dos"; }
    [[nodiscard]] std::string file(const char* name) const { return m_folder / name; }

    struct Talk
    {
        int commands = 0;
        double milliseconds = 0.0; // from the first command that holds the word to the last reply
    };

    // What passed the port since the last call, beginning with the first command that holds the word.
    [[nodiscard]] Talk talk(std::string_view word)
    {
        std::ifstream stream(log());
        stream.seekg(m_seen);
        Talk talk;
        double first = 0.0;
        for (std::string text; std::getline(stream, text);) {
            m_seen = stream.tellg();
            const double time = std::strtod(text.c_str(), nullptr);
            if (text.find(" port recv ") != std::string::npos) {
                if (talk.commands == 0 && text.find(word) == std::string::npos) {
                    continue;
                }
                first = talk.commands++ == 0 ? time : first;
            } else if (text.find(" port sent ") != std::string::npos && talk.commands > 0) {
                talk.milliseconds = time - first;
            }
        }
        return talk;
    }

private:
    [[nodiscard]] std::string log() const { return m_folder / "wire.log"; }

    fs::path m_folder;
    Process m_process;
    std::streampos m_seen = 0;
};

std::vector<std::string> addresses()
{
    std::vector<std::string> list;
    for (const auto& rows : {tables::parameters_CFG(), tables::parameters_KB()}) {
        for (const tables::Parameter& row : rows) {
            list.emplace_back(text::leftOf(row.address, 3));
            if (row.address.size() > 3) {
                list.emplace_back(text::rightOf(row.address, 3));
            }
        }
    }
    return list;
}

// The client that does nothing but ask.
void askForAll(const Reader& reader)
{
    const int port = ::open((reader.names() + "/com5").c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    if (port < 0 || ::tcgetattr(port, &settings) != 0) {
        fail("the port cannot be opened");
    }
    ::cfmakeraw(&settings);
    ::tcsetattr(port, TCSANOW, &settings);
    std::array<char, 256> buffer{};
    for (const std::string& address : addresses()) {
        const std::string command = "/rawxact WPV" + address + "\n";
        if (::write(port, command.data(), command.size()) != static_cast<ssize_t>(command.size())) {
            fail("the port takes no command");
        }
        for (bool isEnd = false; !isEnd;) {
            waitForInput(port);
            const ssize_t count = ::read(port, buffer.data(), buffer.size());
            isEnd = count > 0 && buffer[static_cast<std::size_t>(count) - 1] == '\n';
            if (count <= 0) {
                fail("the port is lost");
            }
        }
    }
    ::close(port);
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

bool g_isKept = true;

// Prints a figure beside its limit and remembers a broken one.
void judge(const char* what, double value, double most, const char* unit)
{
    std::printf("%s: %.2f%s, at most %.4g%s%s\n", what, value, unit, most, unit, value > most ? "  TOO MUCH" : "");
    g_isKept = g_isKept && value <= most;
}

void expectCommands(const Reader::Talk& talk, int commands, const char* who)
{
    if (talk.commands != commands) {
        fail(std::string(who) + ": " + std::to_string(talk.commands) + " commands instead of " +
             std::to_string(commands));
    }
}

void measureTime(const fs::path& bin)
{
    Reader reader(bin);
    const std::string teslin = bin / "teslin";
    const std::vector<std::string> common = {teslin, "--quiet", "--dosdevices", reader.names()};
    const auto with = [&common](const std::vector<std::string>& words) {
        std::vector<std::string> line = common;
        line.insert(line.end(), words.begin(), words.end());
        return line;
    };
    const int count = static_cast<int>(addresses().size());
    const std::string cfg = reader.file("all.tlc");
    const std::string kb = reader.file("all.txt");
    run(with({"retrieve", "-o", cfg, "-o", kb}));
    static_cast<void>(reader.talk({}));

    std::vector<double> alone;
    std::vector<double> reading;
    std::vector<double> whole;
    std::vector<double> writing;
    std::vector<double> version;
    for (int round = 0; round < kRounds; ++round) {
        askForAll(reader);
        Reader::Talk talk = reader.talk({});
        expectCommands(talk, count, "the reader alone");
        alone.push_back(talk.milliseconds);

        whole.push_back(run(with({"retrieve"})));
        talk = reader.talk({});
        expectCommands(talk, count, "teslin retrieve");
        reading.push_back(talk.milliseconds);

        // All but the parameter that is read only are written and read back, behind the reading of all.
        run(with({"update", "--all", "--no-backup", cfg, kb}));
        talk = reader.talk("WPW");
        expectCommands(talk, 2 * (count - 1), "teslin update");
        writing.push_back(talk.milliseconds);

        version.push_back(run({teslin, "--version"}));
    }
    const double floor = median(alone);
    std::printf("The reader alone answers %d questions in %.2f ms.\n", count, floor);
    judge("Reading all of them, by ratio", median(reading) / floor, kMostForReading, "");
    judge("The whole of teslin retrieve", median(whole), kLongestReading, " ms");
    judge("Writing all and reading each back, by ratio", median(writing) / floor, kMostForWriting, "");
    judge("teslin --version", median(version), kLongestVersion, " ms");
}

// The share of the memory that is a process's own, in KiB.
double memoryOf(pid_t process)
{
    std::ifstream stream("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string text; std::getline(stream, text);) {
        if (text.starts_with("Pss:")) {
            return std::strtod(text.c_str() + 4, nullptr);
        }
    }
    fail("the system does not tell how large a process is");
}

// While it waits for the last of all parameters.
void measureMemory(const fs::path& bin)
{
    Reader reader(bin, {"/rawxact WPV114: silent"});
    const Process teslin = start(
        {bin / "teslin", "--quiet", "--timeout", "60000", "--dosdevices", reader.names(), "--json", "retrieve"}, false);
    const Clock::time_point latest = Clock::now() + std::chrono::milliseconds(kPatience);
    int asked = 0;
    while (asked < static_cast<int>(addresses().size())) {
        asked += reader.talk({}).commands;
        if (Clock::now() > latest) {
            fail("teslin did not ask for all");
        }
        ::poll(nullptr, 0, 1);
    }
    judge("Memory", memoryOf(teslin.id) / 1024, kMostMemory / 1024, " MiB");
    ::kill(teslin.id, SIGTERM);
    end(teslin);
}

// The program without its symbols. Its own libraries are in it; those of the compiler are the system's.
void measureSize(const fs::path& bin)
{
    const std::string stripped =
        (fs::temp_directory_path() / ("teslin-stripped-" + std::to_string(::getpid()))).string();
    run({"/usr/bin/strip", "-o", stripped, bin / "teslin"});
    judge("Size, stripped", static_cast<double>(fs::file_size(stripped)) / 1024, kMostBytes / 1024, " KiB");
    fs::remove(stripped);
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2 || !fs::exists(fs::path(argv[1]) / "teslin")) {
        std::fprintf(stderr, "Usage: command-line-bench BIN_FOLDER\n");
        return 2;
    }
    const fs::path bin = fs::canonical(argv[1]);
    measureTime(bin);
    measureMemory(bin);
    measureSize(bin);
    return g_isKept ? 0 : 1;
}
