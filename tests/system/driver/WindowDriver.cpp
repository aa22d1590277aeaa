#include "tests/system/driver/WindowDriver.h"

#include "tests/system/driver/DriverCommands.h"

#include <unistd.h>

#include <array>
#include <cerrno>

namespace windowdriver {

WindowDriver::WindowDriver(QObject* parent)
    : QObject(parent)
    , m_input(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&m_input, &QSocketNotifier::activated, this, &WindowDriver::readCommands);
}

void WindowDriver::readCommands()
{
    std::array<char, 4096> bytes{};
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) {
        return;
    }
    if (count <= 0) {
        // Nobody drives any more. The program is the user's now.
        m_input.setEnabled(false);
        return;
    }
    m_unfinished.append(bytes.data(), count);
    for (qsizetype end = m_unfinished.indexOf('\n'); end >= 0; end = m_unfinished.indexOf('\n')) {
        const QByteArray line = m_unfinished.left(end);
        m_unfinished.remove(0, end + 1);
        answer(carryOut(QString::fromUtf8(line)).toUtf8() + '\n');
    }
}

void WindowDriver::answer(const QByteArray& line)
{
    for (qsizetype done = 0; done < line.size();) {
        const ssize_t count = ::write(STDOUT_FILENO, line.constData() + done, static_cast<size_t>(line.size() - done));
        if (count < 0 && errno != EINTR) {
            m_input.setEnabled(false);
            return;
        }
        done += std::max<ssize_t>(count, 0);
    }
}

} // namespace windowdriver
