#include "platform/windows/SerialPort.h"

#include <algorithm>
#include <chrono>

namespace platform {

namespace {

using std::chrono::milliseconds;

// For bytes that the system has said are there.
constexpr milliseconds kLongestFetch{50};
constexpr std::size_t kMostAtOnce = 65536;
// A driver that ends reads without a byte must not keep the program busy.
constexpr milliseconds kPause{20};

// Virtual ports have no line, and some neither tell its state nor let it be set.
void setLine(const Handle& port)
{
    DCB line = {};
    line.DCBlength = sizeof line;
    if (::GetCommState(port.get(), &line) == 0) {
        return;
    }
    line.BaudRate = CBR_9600;
    line.ByteSize = 8;
    line.Parity = NOPARITY;
    line.StopBits = ONESTOPBIT;
    line.fBinary = TRUE;
    line.fParity = FALSE;
    line.fOutxCtsFlow = FALSE;
    line.fOutxDsrFlow = FALSE;
    line.fDtrControl = DTR_CONTROL_ENABLE;
    line.fDsrSensitivity = FALSE;
    line.fOutX = FALSE;
    line.fInX = FALSE;
    line.fErrorChar = FALSE;
    line.fNull = FALSE;
    line.fRtsControl = RTS_CONTROL_ENABLE;
    line.fAbortOnError = FALSE;
    ::SetCommState(port.get(), &line);
}

Result<void> setUp(const Handle& port)
{
    setLine(port);
    // No limits of the driver's own: a read ends with its last byte, a write is stopped by the one who waits for it.
    COMMTIMEOUTS none = {};
    if (::SetCommTimeouts(port.get(), &none) == 0 || ::PurgeComm(port.get(), PURGE_RXCLEAR) == 0) {
        return lastSystemError();
    }
    return {};
}

} // namespace

SerialPort::SerialPort(milliseconds longestWrite, QObject* parent)
    : QObject(parent)
    , m_longestWrite(longestWrite)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPause);
    connect(&m_ended, &QWinEventNotifier::activated, this, &SerialPort::takeWhatCame);
    connect(&m_pause, &QTimer::timeout, this, &SerialPort::goOnReading);
}

SerialPort::~SerialPort()
{
    close();
}

Result<void> SerialPort::open(const std::filesystem::path& path)
{
    close();
    Handle port(::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                              FILE_FLAG_OVERLAPPED, nullptr));
    if (!port.isOpen()) {
        return lastSystemError();
    }
    Result<void> ready = setUp(port);
    if (!ready) {
        return ready;
    }
    m_port = std::move(port);
    ready = startReading();
    if (!ready) {
        close();
    }
    return ready;
}

void SerialPort::close()
{
    m_pause.stop();
    m_ended.setEnabled(false);
    if (m_reading.isRunning()) {
        static_cast<void>(m_reading.end());
    }
    m_port.close();
}

Result<void> SerialPort::write(std::string_view bytes)
{
    Transfer writing;
    const Result<void> started = writing.startWriting(m_port, bytes);
    if (!started) {
        return started;
    }
    static_cast<void>(writing.endsWithin(m_longestWrite));
    const Result<std::string> written = writing.end();
    if (written && written.value().size() == bytes.size()) {
        return {};
    }
    ::PurgeComm(m_port.get(), PURGE_TXABORT | PURGE_TXCLEAR);
    return written ? systemError(ERROR_TIMEOUT) : written.error();
}

Result<void> SerialPort::startReading()
{
    Result<void> started = m_reading.startReading(m_port, 1);
    if (started) {
        m_ended.setHandle(m_reading.event());
        m_ended.setEnabled(true);
    }
    return started;
}

void SerialPort::goOnReading()
{
    if (!startReading() && m_onFailed) {
        m_onFailed();
    }
}

void SerialPort::takeWhatCame()
{
    if (!m_reading.isRunning() || !m_reading.endsWithin(milliseconds::zero())) {
        return; // a notice of the read before
    }
    m_ended.setEnabled(false);
    Result<std::string> bytes = m_reading.end();
    if (!bytes) {
        if (m_onFailed) {
            m_onFailed();
        }
        return;
    }
    std::string received = std::move(bytes).value();
    if (received.empty()) {
        m_pause.start();
        return;
    }
    received += fetchRest();
    if (m_onReceived) {
        m_onReceived(received);
    }
    if (m_port.isOpen()) {
        goOnReading();
    }
}

std::string SerialPort::fetchRest()
{
    DWORD errors = 0;
    COMSTAT state = {};
    if (::ClearCommError(m_port.get(), &errors, &state) == 0 || state.cbInQue == 0) {
        return {};
    }
    Transfer fetching;
    if (!fetching.startReading(m_port, std::min<std::size_t>(state.cbInQue, kMostAtOnce))) {
        return {};
    }
    static_cast<void>(fetching.endsWithin(kLongestFetch));
    const Result<std::string> rest = fetching.end();
    return rest ? rest.value() : std::string(); // the next read meets the failure again
}

} // namespace platform
