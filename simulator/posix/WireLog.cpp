#include "simulator/posix/WireLog.h"

#include "simulator/EscapedText.h"
#include "simulator/posix/SetupError.h"

#include <fcntl.h>

#include <array>
#include <cstdio>
#include <ctime>

namespace simulator {

namespace {

constexpr mode_t kFileMode = 0666; // less the umask

std::string timeOfDay()
{
    constexpr long kNanosecondsInMillisecond = 1'000'000;
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    tm parts{};
    ::gmtime_r(&now.tv_sec, &parts);
    std::array<char, 32> date{};
    std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &parts);
    std::array<char, 24> fraction{};
    std::snprintf(fraction.data(), fraction.size(), ".%03ldZ", now.tv_nsec / kNanosecondsInMillisecond);
    return std::string(date.data()) + fraction.data();
}

bool writeWhole(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace

WireLog::WireLog(const std::string& file, bool toStandardError)
    : m_toStandardError(toStandardError)
{
    if (!file.empty()) {
        m_file = Descriptor(::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY, kFileMode));
        if (!m_file.isOpen()) {
            throw systemError("open the log " + file);
        }
    }
}

void WireLog::event(std::string_view door, std::string_view event, std::string_view detail)
{
    write(door, event, quoted(detail));
}

void WireLog::write(std::string_view door, std::string_view event, std::string_view quotedDetail)
{
    if (!m_file.isOpen() && !m_toStandardError) {
        return;
    }
    const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - m_start;
    std::array<char, 32> milliseconds{};
    std::snprintf(milliseconds.data(), milliseconds.size(), "%.3f ", elapsed.count());
    std::string line = milliseconds.data() + timeOfDay();
    line.append(" ").append(door).append(" ").append(event);
    if (!quotedDetail.empty()) {
        line.append(" ").append(quotedDetail);
    }
    report(line + '\n');
}

void WireLog::report(const std::string& line)
{
    if (m_toStandardError) {
        writeWhole(STDERR_FILENO, line);
    }
    // A log with holes must not pass for a whole one, but one word about it is enough.
    if (m_file.isOpen() && !writeWhole(m_file.get(), line) && !m_failed) {
        m_failed = true;
        writeWhole(STDERR_FILENO, "ksd-simulator: " + std::string(systemError("write the log").what()) + '\n');
    }
}

} // namespace simulator
