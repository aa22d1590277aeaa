#include "device/DirectLink.h"

#include "device/Commands.h"
#include "device/Replies.h"
#include "device/ReplyPeriod.h"
#include "device/StrictReplies.h"
#include "platform/DeviceObject.h"
#include "platform/PortClaim.h"
#include "platform/ReceivedLines.h"
#include "text/HexText.h"

#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/serial_port.hpp>
#include <asio/write.hpp>

#include <algorithm>
#include <array>
#include <filesystem>
#include <thread>
#include <utility>

namespace device {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using Kind = LinkError::Kind;

constexpr int kTries = 3;
constexpr milliseconds kQuiet{100};         // of silence after which a line counts as drained
constexpr milliseconds kLongestDrain{2000}; // a line that never falls silent is no reader
constexpr milliseconds kSlice{50};          // until an interruption is noticed
constexpr milliseconds kEchoPeriod{3 * ReplyPeriod::kTickMilliseconds}; // what the window gives every command
constexpr milliseconds kOtherProgramLeaves{300};
constexpr std::size_t kPortNameBuffer = 2000; // bytes the driver's answer may have

constexpr unsigned kBitsPerSecond = 9600; // the driver's virtual port ignores it, a real line would not

std::string visible(std::string_view line)
{
    constexpr std::size_t kMost = 60;
    std::string text;
    for (const char c : line.substr(0, kMost)) {
        text += c >= ' ' && c <= '~' ? c : '.';
    }
    return line.size() > kMost ? text + "..." : text;
}

std::string portText(int port)
{
    return "COM" + std::to_string(port);
}

LinkError inUse(int port, const std::filesystem::path& device)
{
    std::string who;
    for (const platform::PortHolder& holder : platform::portHolders(device)) {
        who += (who.empty() ? "" : ", ") + holder.name + " (process " + std::to_string(holder.process) + ")";
    }
    return {Kind::PortInUse, portText(port) + " is in use by " + (who.empty() ? "another program" : who),
            "Close that program, or wait until it is done with the reader."};
}

} // namespace

// The open port: bytes out, lines in, and never longer than it was told to wait.
class DirectLink::Line final
{
public:
    Line(const Setup& setup, int port)
        : m_setup(setup)
        , m_name(portText(port))
        , m_port(m_io)
    {}

    ~Line()
    {
        if (m_isClaimed) {
            platform::releasePort(nativeHandle());
        }
        asio::error_code ignored;
        m_port.close(ignored);
        m_io.restart();
        m_io.poll(); // what was waiting for bytes ends now
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    void open(const std::filesystem::path& device, int port)
    {
        asio::error_code error;
        m_port.open(device.string(), error);
        if (!error) {
            claim(device, port);
            m_port.set_option(asio::serial_port::baud_rate(kBitsPerSecond), error);
        }
        if (!error) {
            m_port.set_option(asio::serial_port::character_size(8), error);
        }
        if (error) {
            failToOpen(error, device, port);
        }
    }

    void write(std::string bytes)
    {
        checkInterruption();
        bool isWritten = false;
        asio::error_code error;
        asio::async_write(m_port, asio::buffer(bytes), [&](const asio::error_code& result, std::size_t) {
            error = result;
            isWritten = true;
        });
        runUntil(Clock::now() + m_setup.timeout, [&] { return isWritten; });
        if (!isWritten) {
            asio::error_code ignored;
            m_port.close(ignored); // the bytes must not be touched any more
            runUntil(Clock::now() + kQuiet, [&] { return isWritten; });
            throw LinkError(Kind::PortLost, m_name + " takes no more bytes");
        }
        if (error) {
            throw lost();
        }
    }

    // The next line of those that have come or come by then.
    [[nodiscard]] std::optional<std::string> lineUntil(Clock::time_point end)
    {
        while (!m_lines.hasLine()) {
            if (!receiveUntil(end)) {
                return std::nullopt;
            }
        }
        std::string line = m_lines.takeLine();
        line.pop_back();
        return line;
    }

    // Throws away what has come, without waiting for more.
    void drain()
    {
        const Clock::time_point latest = Clock::now() + kLongestDrain;
        while (receiveUntil(Clock::time_point::min())) {
            checkThatItEnds(latest);
        }
        m_lines.clear();
    }

    // Throws away what comes until nothing has come for a while.
    void drainUntilQuiet()
    {
        const Clock::time_point latest = Clock::now() + kLongestDrain;
        while (receiveUntil(Clock::now() + kQuiet)) {
            checkThatItEnds(latest);
        }
        m_lines.clear();
    }

    void checkInterruption() const
    {
        if (m_setup.isInterrupted()) {
            throw LinkError(Kind::Interrupted, "interrupted");
        }
    }

private:
    void checkThatItEnds(Clock::time_point latest) const
    {
        if (Clock::now() > latest) {
            throw LinkError(Kind::NoReply, m_name + " sends without end; this is not a reader's driver");
        }
    }

    [[nodiscard]] std::intptr_t nativeHandle() { return reinterpret_cast<std::intptr_t>(handleOf(m_port)); }

    // A number on one system, a pointer on another.
    template <typename Port>
    static void* handleOf(Port& port)
    {
        if constexpr (std::is_pointer_v<typename Port::native_handle_type>) {
            return port.native_handle();
        } else {
            return reinterpret_cast<void*>(static_cast<std::intptr_t>(port.native_handle())); // NOLINT
        }
    }

    // A program that has just ended may be still leaving.
    void claim(const std::filesystem::path& device, int port)
    {
        const Clock::time_point end = Clock::now() + kOtherProgramLeaves;
        for (;;) {
            const platform::Result<void> claimed = platform::claimPort(nativeHandle());
            if (claimed) {
                m_isClaimed = true;
                return;
            }
            if (!platform::isInUse(claimed.error())) {
                throw LinkError(Kind::NoPort, m_name + " cannot be used: " + claimed.error().description);
            }
            if (Clock::now() > end) {
                throw inUse(port, device);
            }
            checkInterruption();
            std::this_thread::sleep_for(milliseconds(5));
        }
    }

    [[noreturn]] void failToOpen(const asio::error_code& error, const std::filesystem::path& device, int port)
    {
        if (platform::isInUse(platform::systemError(error.value()))) {
            throw inUse(port, device);
        }
        throw LinkError(Kind::NoPort, m_name + " cannot be opened: " + platform::systemError(error.value()).description,
                        "\"teslin doctor\" tells where the name leads and who may use it.");
    }

    [[nodiscard]] LinkError lost() const
    {
        return {Kind::PortLost, m_name + " has gone: the reader or its driver was taken away"};
    }

    template <typename Condition>
    void runUntil(Clock::time_point end, Condition isDone)
    {
        while (!isDone()) {
            m_io.restart();
            const Clock::time_point now = Clock::now();
            if (end <= now) {
                m_io.poll();
                return;
            }
            m_io.run_one_until(std::min(end, now + kSlice));
        }
    }

    // True when bytes have come by then.
    [[nodiscard]] bool receiveUntil(Clock::time_point end)
    {
        checkInterruption();
        const int before = m_lines.size();
        if (!m_isReading) {
            startReading();
        }
        while (m_isReading) {
            const Clock::time_point now = Clock::now();
            m_io.restart();
            if (end <= now) {
                m_io.poll();
                break;
            }
            m_io.run_one_until(std::min(end, now + kSlice));
            checkInterruption();
        }
        if (m_error) {
            throw lost();
        }
        return m_lines.size() > before;
    }

    void startReading()
    {
        m_isReading = true;
        m_port.async_read_some(asio::buffer(m_buffer), [this](const asio::error_code& error, std::size_t count) {
            m_isReading = false;
            m_error = error;
            m_lines.append({m_buffer.data(), count});
        });
    }

    const Setup& m_setup;
    std::string m_name;
    asio::io_context m_io{1};
    asio::serial_port m_port;
    std::array<char, 1024> m_buffer{};
    platform::ReceivedLines m_lines;
    asio::error_code m_error;
    bool m_isReading = false;
    bool m_isClaimed = false;
};

DirectLink::DirectLink(Setup setup)
    : m_setup(std::move(setup))
{}

DirectLink::~DirectLink() = default;

bool DirectLink::isOpen() const
{
    return m_line != nullptr;
}

int DirectLink::port() const
{
    return m_setup.port;
}

void DirectLink::close()
{
    m_line.reset();
    m_unanswered = 0;
    m_lastUnbelieved.clear();
}

void DirectLink::open()
{
    close();
    if (m_setup.port == 0) {
        findPort();
    }
    const platform::Result<std::filesystem::path> device = m_setup.names.find(portText(m_setup.port));
    if (!device) {
        throw LinkError(Kind::NoPort, portText(m_setup.port) + " is not there: " + device.error().description,
                        "\"teslin doctor\" tells where the names lead.");
    }
    auto line = std::make_unique<Line>(m_setup, m_setup.port);
    line->open(device.value(), m_setup.port);
    line->drain();
    m_line = std::move(line);
}

void DirectLink::findPort()
{
    const std::string name = R"(\\.\)" + m_setup.driverName;
    const std::string remedy =
        "Check that the driver is installed and the reader attached; \"teslin doctor\" tells more.";
    const std::unique_ptr<platform::DeviceObject> driver = platform::makeDeviceObject(m_setup.names);
    if (const auto opened = driver->open(name); !opened) {
        throw LinkError(Kind::NoDriver,
                        "The driver's device object " + name + " cannot be opened: " + opened.error().description,
                        remedy);
    }
    if (const auto written = driver->write(std::string(commands::kGetPortName) + commands::kLineEnd); !written) {
        throw LinkError(Kind::NoDriver, "The driver takes no question: " + written.error().description, remedy);
    }
    const platform::Result<std::string> answer = driver->read(kPortNameBuffer);
    if (!answer) {
        throw LinkError(Kind::NoDriver, "The driver does not tell its port: " + answer.error().description, remedy);
    }
    const std::optional<std::string> port = replies::portName(answer.value());
    const std::optional<std::int16_t> number = port ? replies::portNumber(*port) : std::nullopt;
    if (!number || *number < 1) {
        throw LinkError(Kind::NoDriver, "The driver's answer names no port: \"" + visible(answer.value()) + "\"",
                        remedy);
    }
    m_setup.port = *number;
}

std::optional<std::string> DirectLink::exchange(std::string_view command, const Accept& accept, milliseconds limit)
{
    m_line->drain();
    m_line->write(std::string(command) + commands::kLineEnd);
    const Clock::time_point end = Clock::now() + limit;
    while (std::optional<std::string> line = m_line->lineUntil(end)) {
        if (accept(*line)) {
            return line;
        }
        m_lastUnbelieved = std::move(*line);
        if (Clock::now() > end) {
            break; // a line that never falls silent
        }
    }
    return std::nullopt;
}

std::string DirectLink::ask(std::string_view command, const Accept& accept)
{
    m_lastUnbelieved.clear();
    for (int attempt = 0; attempt < kTries; ++attempt) {
        if (std::optional<std::string> line = exchange(command, accept, m_setup.timeout)) {
            settleAfterSilence(accept);
            return std::move(*line);
        }
        ++m_unanswered;
        m_line->drainUntilQuiet();
    }
    failWithoutReply(command);
}

// The replies to questions that were given up may come behind the one that was believed, and must not meet the next
// question.
void DirectLink::settleAfterSilence(const Accept& accept)
{
    const Clock::time_point end = Clock::now() + m_setup.timeout;
    while (m_unanswered > 0 && Clock::now() < end) {
        const std::optional<std::string> line = m_line->lineUntil(end);
        if (!line) {
            break;
        }
        m_unanswered -= accept(*line) ? 1 : 0;
    }
    m_unanswered = 0;
}

void DirectLink::failWithoutReply(std::string_view command) const
{
    std::string sentence = "No reply to " + std::string(command) + ", asked three times";
    if (!m_lastUnbelieved.empty()) {
        sentence += "; a line came that is no answer to it: \"" + visible(m_lastUnbelieved) + "\"";
    }
    throw LinkError(Kind::NoReply, sentence, "Check that the reader is attached and its light is on.");
}

std::uint8_t DirectLink::readParameter(std::string_view address)
{
    std::uint8_t value = 0;
    (void)ask(commands::readParameter(address), [&](std::string_view line) {
        const std::optional<std::uint8_t> found = strict::parameterValue(line, address);
        value = found.value_or(value);
        return found.has_value();
    });
    return value;
}

void DirectLink::writeParameter(std::string_view address, std::uint8_t value)
{
    const std::string digits = text::hexTwoDigits(value);
    (void)exchange(
        commands::writeParameter(address, digits),
        [&](std::string_view line) { return strict::isEchoOfWrite(line, address, digits); }, kEchoPeriod);
}

void DirectLink::send(std::string_view command)
{
    (void)exchange(
        command, [command](std::string_view line) { return line.starts_with(command); }, kEchoPeriod);
}

void DirectLink::settle(milliseconds duration)
{
    const Clock::time_point end = Clock::now() + duration;
    while (Clock::now() < end) {
        m_line->checkInterruption();
        std::this_thread::sleep_for(std::min<Clock::duration>(kSlice, end - Clock::now()));
    }
}

} // namespace device
