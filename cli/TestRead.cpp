#include "cli/Commands.h"
#include "cli/Interruption.h"
#include "cli/LayoutList.h"
#include "cli/Reader.h"
#include "cli/Utf8.h"
#include "device/Commands.h"
#include "device/ReadTest.h"
#include "device/ReplyPeriod.h"
#include "device/SwipeText.h"
#include "platform/TerminalKeys.h"

namespace cli {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kTick{device::ReplyPeriod::kTickMilliseconds};
constexpr milliseconds kSettle = kTick * static_cast<int>(device::ReadTest::kSettleTicks);
constexpr milliseconds kAfterMode = kTick * static_cast<int>(device::ReadTest::kAfterModeTicks);
constexpr milliseconds kPause = kTick * static_cast<int>(device::ReadTest::kPauseTicks);

constexpr char kCtrlC = '\x03';
constexpr char kCtrlD = '\x04';

// Text of the read test as a terminal takes it, which goes to the start of a line by itself.
std::string shown(std::string_view text)
{
    std::string line;
    for (const char c : text) {
        if (c == '\r') {
            continue;
        }
        line += toHarmlessUtf8(std::string_view(&c, 1));
    }
    return line;
}

class ReadTestOnTerminal final
{
public:
    ReadTestOnTerminal(const Arguments& arguments, Console& console)
        : m_arguments(arguments)
        , m_console(console)
        , m_keys(platform::makeTerminalKeys())
    {}

    void run()
    {
        m_console.print("Please wait...");
        enter();
        try {
            watch();
        } catch (...) {
            leave();
            throw;
        }
        leave();
        if (isInterrupted()) {
            throw Failure(Exit::Interrupted, "interrupted");
        }
    }

private:
    void enter()
    {
        Reader reader(m_arguments, m_console);
        reader.open();
        const Identification found = identify(reader.link());
        if (!found.layoutId) {
            throw device::LinkError(device::LinkError::Kind::NoReply, "The reader does not tell its keyboard layout");
        }
        const files::KeyboardLanguage layout = layoutOf(*found.layoutId);
        m_sets = {.Track1Start = layout.Track1Start,
                  .Track2Start = layout.Track2Start,
                  .Track3Start = layout.Track3Start,
                  .TrackEnd = layout.TrackEnd};
        // Whatever the reader types while it is switched must not get into a command line.
        if (!m_keys->takeEveryKey()) {
            throw Failure(Exit::Usage, "The read test needs a terminal to type into");
        }
        say("(Setting the Teslin to normal mode.  Ignore these values)\n");
        reader.link().settle(kSettle);
        reader.link().send(device::commands::kNormalMode1);
        reader.link().send(device::commands::kNormalMode2);
        reader.link().settle(kAfterMode);
        reader.close();
        static_cast<void>(m_keys->read(milliseconds(0)));
        say("When the Teslin's light turns green, please read your cards.  Ctrl+C ends.\n");
        say(std::string("(spaces represented by \"") + device::SwipeText::kVisibleBlank + "\")\n");
        say("===========================");
    }

    void watch()
    {
        bool isRawBlockDue = false;
        Clock::time_point rawBlockAt;
        while (!isInterrupted()) {
            const std::optional<std::string> typed = m_keys->read(kTick);
            if (!typed) {
                return; // the terminal has gone
            }
            for (const char key : text::fromUtf8(*typed)) {
                if (key == kCtrlC || key == kCtrlD) {
                    return;
                }
                const device::SwipeText::Typed text = m_swipe.keyPress(key, m_sets);
                say(text.heading);
                say(text.shown == '\r' ? std::string_view("\n") : std::string_view(&text.shown, 1));
                isRawBlockDue = true;
                rawBlockAt = Clock::now() + kPause;
            }
            if (isRawBlockDue && Clock::now() >= rawBlockAt) {
                isRawBlockDue = false;
                say(m_swipe.takeRawBlock().value_or(""));
            }
        }
    }

    // Brings the reader back from its normal mode; if that fails, the user must know.
    void leave()
    {
        say("\n");
        m_keys.reset();
        Reader reader(m_arguments, m_console, [] { return false; });
        try {
            reader.open();
            reader.link().send(device::commands::kLeaveReadTest);
        } catch (const device::LinkError&) {
            m_console.complain("The reader may still be in its normal mode; detach it and attach it again.");
            throw;
        }
    }

    void say(std::string_view text)
    {
        m_console.printBytes(shown(text));
        static_cast<void>(Console::flush());
    }

    const Arguments& m_arguments;
    Console& m_console;
    std::unique_ptr<platform::TerminalKeys> m_keys;
    device::SentinelSets m_sets;
    device::SwipeText m_swipe;
};

} // namespace

Exit testRead(const Arguments& arguments, Console& console)
{
    if (arguments.json || arguments.dryRun) {
        throw Failure(Exit::Usage, "The read test has neither --json nor --dry-run: it switches the reader's mode, and "
                                   "somebody swipes cards and looks on");
    }
    if (!platform::isTerminal(platform::Stream::Input)) {
        throw Failure(Exit::Usage, "The read test needs a terminal to type into");
    }
    ReadTestOnTerminal(arguments, console).run();
    return Exit::Done;
}

} // namespace cli
