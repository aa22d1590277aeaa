#include "platform/DeviceObject.h"

#include "platform/PortAnswer.h"
#include "platform/windows/Transfer.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace platform {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// A serial port would otherwise wait until as much has come as was asked for. What does not answer like a port is told
// nothing: the driver's own device has commands of its own. True when it is a port.
bool endReadsAtSilence(const Handle& device, milliseconds quiet)
{
    COMMTIMEOUTS limits = {};
    if (::GetCommTimeouts(device.get(), &limits) == 0) {
        return false;
    }
    limits = {};
    limits.ReadIntervalTimeout = static_cast<DWORD>(quiet.count());
    if (::SetCommTimeouts(device.get(), &limits) != 0) {
        ::PurgeComm(device.get(), PURGE_RXCLEAR);
    }
    return true;
}

class WindowsDeviceObject final : public DeviceObject
{
public:
    WindowsDeviceObject(DosNames names, DeviceObjectLimits limits)
        : m_names(std::move(names))
        , m_limits(limits)
    {}
    ~WindowsDeviceObject() override { close(); }

    [[nodiscard]] Result<void> open(std::string_view dosName) override;
    [[nodiscard]] Result<void> write(std::string_view bytes) override;
    [[nodiscard]] Result<std::string> read(std::size_t most) override;
    void close() override
    {
        m_device.close();
        m_position = 0;
        m_isPort = false;
    }

private:
    // One read; nothing at the end of a plain file and when the limit passes in silence.
    [[nodiscard]] Result<std::string> readOnce(std::size_t most, milliseconds limit);
    void waitForEnd(const Transfer& transfer, milliseconds limit) const;
    [[nodiscard]] bool isPlainFile() const { return ::GetFileType(m_device.get()) == FILE_TYPE_DISK; }

    DosNames m_names;
    DeviceObjectLimits m_limits;
    Handle m_device;
    std::uint64_t m_position = 0; // in a plain file
    bool m_isPort = false;
};

Result<void> WindowsDeviceObject::open(std::string_view dosName)
{
    close();
    const Result<std::filesystem::path> path = m_names.find(dosName);
    if (!path) {
        return path.error();
    }
    Handle device(::CreateFileW(path.value().c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
    if (!device.isOpen()) {
        return lastSystemError();
    }
    m_isPort = endReadsAtSilence(device, m_limits.quiet);
    m_device = std::move(device);
    return {};
}

Result<void> WindowsDeviceObject::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        Transfer transfer;
        const Result<void> started = transfer.startWriting(m_device, bytes, m_position);
        if (!started) {
            return started;
        }
        waitForEnd(transfer, m_limits.firstByte);
        const Result<std::string> written = transfer.end();
        if (!written) {
            return written.error();
        }
        if (written.value().empty()) {
            return systemError(ERROR_TIMEOUT);
        }
        bytes.remove_prefix(written.value().size());
        m_position += written.value().size();
    }
    return {};
}

Result<std::string> WindowsDeviceObject::read(std::size_t most)
{
    std::string answer;
    while (answer.size() < most && !namesAPort(answer)) {
        const Result<std::string> more =
            readOnce(most - answer.size(), answer.empty() ? m_limits.firstByte : m_limits.quiet);
        if (!more) {
            return more.error();
        }
        if (more.value().empty()) {
            if (answer.empty() && !isPlainFile()) {
                return systemError(ERROR_TIMEOUT);
            }
            break;
        }
        answer += more.value();
        // A device gives its answer to one read, whole; another read would ask it for something else.
        if (!m_isPort && !isPlainFile()) {
            break;
        }
    }
    return answer;
}

void WindowsDeviceObject::waitForEnd(const Transfer& transfer, milliseconds limit) const
{
    const Clock::time_point end = Clock::now() + limit;
    bool goesOn = true;
    while (goesOn) {
        whileWaiting();
        const auto left = std::max(std::chrono::ceil<milliseconds>(end - Clock::now()), milliseconds::zero());
        goesOn = !transfer.endsWithin(std::min(left, m_limits.breath)) && left > m_limits.breath;
    }
}

Result<std::string> WindowsDeviceObject::readOnce(std::size_t most, milliseconds limit)
{
    Transfer transfer;
    const Result<void> started = transfer.startReading(m_device, most, m_position);
    if (started) {
        waitForEnd(transfer, limit);
    }
    const Result<std::string> bytes = started ? transfer.end() : Result<std::string>(started.error());
    if (!bytes && bytes.error().number == ERROR_HANDLE_EOF) {
        return std::string();
    }
    if (bytes) {
        m_position += bytes.value().size();
    }
    return bytes;
}

} // namespace

std::unique_ptr<DeviceObject> makeDeviceObject(DosNames names, DeviceObjectLimits limits)
{
    return std::make_unique<WindowsDeviceObject>(std::move(names), limits);
}

} // namespace platform
