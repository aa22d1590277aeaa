#include "cli/Commands.h"
#include "cli/Ending.h"
#include "cli/Interruption.h"
#include "cli/LocalTime.h"
#include "cli/Updating.h"
#include "device/LinkError.h"
#include "platform/TerminalKeys.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <thread>

namespace cli {

namespace {

using device::LinkError;
using std::chrono::milliseconds;

constexpr milliseconds kBetweenLooks{300};
constexpr milliseconds kSlice{50};

struct Handled
{
    int number = 0;
    Exit exit = Exit::Done;
    Update update;
    Ending ending; // of what kept it from its end
};

// A line as soon as a reader is done: whoever reads the log later must find all of them.
class BatchLog final
{
public:
    explicit BatchLog(const std::filesystem::path& file)
        : m_file(file)
    {
        if (file.empty()) {
            return;
        }
        m_stream.open(file, std::ios::app | std::ios::binary);
        check();
    }

    void write(const std::string& line)
    {
        if (!m_file.empty()) {
            m_stream << line << '\n' << std::flush;
            check();
        }
    }

private:
    void check() const
    {
        if (!m_stream) {
            throw Failure(Exit::File, m_file.string() + " cannot be written");
        }
    }

    std::filesystem::path m_file;
    std::ofstream m_stream;
};

void checkInterruption()
{
    if (isInterrupted()) {
        throw LinkError(LinkError::Kind::Interrupted, "interrupted");
    }
}

class Batch final
{
public:
    Batch(const Arguments& arguments, Console& console)
        : m_arguments(arguments)
        , m_console(console)
        , m_wanted(wantedOf(readFiles(arguments, console)))
        , m_log(arguments.log)
        , m_keys(platform::makeTerminalKeys())
    {}

    [[nodiscard]] Exit run()
    {
        try {
            do {
                handleNext();
            } while (!isLast() && asksForNext());
        } catch (const LinkError& error) {
            if (error.kind() != LinkError::Kind::Interrupted) {
                throw;
            }
            m_console.complain("teslin: interrupted");
            m_isCutShort = true;
        }
        return answer();
    }

private:
    void handleNext()
    {
        Handled handled{.number = static_cast<int>(m_readers.size()) + 1, .exit = {}, .update = {}, .ending = {}};
        std::exception_ptr cause;
        try {
            Reader reader(m_arguments, m_console);
            waitForReader(reader, handled.number);
            handled.update = updateReader(reader, m_wanted, m_arguments, m_console);
            handled.exit = m_arguments.dryRun && !handled.update.writing.parameters.empty()
                               ? Exit::Different
                               : exitOf(handled.update.writing);
            cause = handled.update.writing.cause;
        } catch (const LinkError&) {
            cause = std::current_exception();
            handled.exit = endingOf(cause).exit;
        }
        if (m_arguments.dryRun && !cause) {
            handled.exit = handled.update.writing.parameters.empty() ? Exit::Done : Exit::Different;
        }
        handled.ending = endingOf(cause);
        tell(handled);
        const bool isInterruption = handled.exit == Exit::Interrupted;
        m_readers.push_back(std::move(handled));
        if (isInterruption) {
            throw LinkError(LinkError::Kind::Interrupted, "interrupted");
        }
    }

    // Until its port can be opened. A reader that then does not answer is a sick one.
    void waitForReader(Reader& reader, int number)
    {
        for (bool isTold = false;;) {
            checkInterruption();
            try {
                reader.open();
                return;
            } catch (const LinkError& error) {
                if (error.kind() == LinkError::Kind::Interrupted) {
                    throw;
                }
                if (!isTold) {
                    m_console.note("Waiting for reader " + std::to_string(number) + " (" + error.what() + ")");
                    isTold = true;
                }
            }
            pause(kBetweenLooks);
        }
    }

    static void pause(milliseconds duration)
    {
        for (milliseconds passed{0}; passed < duration; passed += kSlice) {
            checkInterruption();
            std::this_thread::sleep_for(kSlice);
        }
    }

    [[nodiscard]] static std::size_t provenOf(const Writing& writing)
    {
        return static_cast<std::size_t>(
            std::ranges::count(writing.parameters, Written::State::Proven, &Written::state));
    }

    [[nodiscard]] std::string resultText(const Handled& handled) const
    {
        const Writing& writing = handled.update.writing;
        if (m_arguments.dryRun && handled.ending.sentence.empty()) {
            return std::to_string(writing.parameters.size()) + " would be written";
        }
        if (handled.exit == Exit::Done) {
            return "proven, " + std::to_string(provenOf(writing)) + " written, " +
                   std::to_string(handled.update.alreadyRight) + " were right already";
        }
        std::string text = "FAILED, " + std::to_string(provenOf(writing)) + " of " +
                           std::to_string(writing.parameters.size()) + " written and proven";
        return handled.ending.sentence.empty() ? text : text + ", " + handled.ending.sentence;
    }

    void tell(const Handled& handled)
    {
        std::string line = "reader " + std::to_string(handled.number) + ": " + resultText(handled);
        for (const std::filesystem::path& backup : handled.update.backups) {
            line += ", backup " + backup.string();
        }
        m_console.print(line);
        m_log.write(logTimeStamp() + " " + line);
        if (!m_arguments.dryRun && handled.exit != Exit::Done) {
            tellFailures(handled.update.writing, m_console);
        }
    }

    [[nodiscard]] bool isLast() const
    {
        return m_arguments.count != 0 && static_cast<int>(m_readers.size()) >= m_arguments.count;
    }

    // True when there is another reader; false at "q" and at the end of the input.
    [[nodiscard]] bool asksForNext()
    {
        m_console.prompt("Attach the next reader and press Enter, or q and Enter to end: ");
        while (m_typed.find('\n') == std::string::npos) {
            checkInterruption();
            const std::optional<std::string> typed = m_keys->read(kSlice);
            if (!typed) {
                m_console.prompt("\n");
                return false;
            }
            m_typed += *typed;
        }
        const std::string line = m_typed.substr(0, m_typed.find('\n'));
        m_typed.erase(0, line.size() + 1);
        return !line.starts_with('q');
    }

    [[nodiscard]] Exit answer()
    {
        const auto good = std::ranges::count(m_readers, Exit::Done, &Handled::exit);
        const bool areAllGood = good == static_cast<std::ptrdiff_t>(m_readers.size());
        const Exit exit = m_isCutShort ? Exit::Interrupted : areAllGood ? Exit::Done : Exit::Different;
        if (!m_arguments.dryRun) {
            m_console.print(std::to_string(good) + " of " + std::to_string(m_readers.size()) + " readers proven");
        }
        Json json = document(m_arguments, exit);
        json["dry_run"] = m_arguments.dryRun;
        json["readers"] = Json::array();
        for (const Handled& handled : m_readers) {
            json["readers"].push_back(jsonOfReader(handled));
        }
        m_console.answer(json);
        return exit;
    }

    [[nodiscard]] static Json jsonOfReader(const Handled& handled)
    {
        Json json = {{"number", handled.number},
                     {"exit", static_cast<int>(handled.exit)},
                     {"already_right", handled.update.alreadyRight},
                     {"parameters", jsonOf(handled.update.writing)},
                     {"backups", Json::array()}};
        for (const std::filesystem::path& backup : handled.update.backups) {
            json["backups"].push_back(backup.string());
        }
        if (!handled.ending.sentence.empty()) {
            json["error"] = cli::jsonOf(handled.ending);
        }
        return json;
    }

    const Arguments& m_arguments;
    Console& m_console;
    Wanted m_wanted;
    BatchLog m_log;
    std::unique_ptr<platform::TerminalKeys> m_keys;
    std::string m_typed;
    std::vector<Handled> m_readers;
    bool m_isCutShort = false;
};

} // namespace

Exit batch(const Arguments& arguments, Console& console)
{
    return Batch(arguments, console).run();
}

} // namespace cli
