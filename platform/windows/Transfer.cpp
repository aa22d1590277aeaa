#include "platform/windows/Transfer.h"

namespace platform {

namespace {

// A transfer that was given up ends at once, unless its driver is broken.
constexpr DWORD kLongestStop = 1000; // milliseconds

} // namespace

// What the system writes into until the transfer has ended.
struct Transfer::Memory
{
    OVERLAPPED overlapped = {};
    Handle event{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::string bytes;
};

Transfer::Transfer()
    : m_memory(std::make_unique<Memory>())
{}

Transfer::~Transfer()
{
    if (isRunning() && !stop()) {
        static_cast<void>(m_memory.release()); // still the system's
    }
}

HANDLE Transfer::event() const
{
    return m_memory->event.get();
}

void Transfer::prepare(std::uint64_t position)
{
    m_memory->overlapped = {};
    m_memory->overlapped.hEvent = m_memory->event.get();
    m_memory->overlapped.Offset = static_cast<DWORD>(position);
    m_memory->overlapped.OffsetHigh = static_cast<DWORD>(position >> 32);
    ::ResetEvent(m_memory->event.get());
}

Result<void> Transfer::startReading(const Handle& device, std::size_t most, std::uint64_t position)
{
    prepare(position);
    m_memory->bytes.assign(most, '\0');
    return started(device, ::ReadFile(device.get(), m_memory->bytes.data(), static_cast<DWORD>(most), nullptr,
                                      &m_memory->overlapped));
}

Result<void> Transfer::startWriting(const Handle& device, std::string_view bytes, std::uint64_t position)
{
    prepare(position);
    m_memory->bytes = bytes;
    return started(device, ::WriteFile(device.get(), m_memory->bytes.data(), static_cast<DWORD>(bytes.size()), nullptr,
                                       &m_memory->overlapped));
}

Result<void> Transfer::started(const Handle& device, BOOL result)
{
    if (result == 0 && ::GetLastError() != ERROR_IO_PENDING) {
        return lastSystemError();
    }
    m_device = device.get();
    return {};
}

bool Transfer::endsWithin(std::chrono::milliseconds limit) const
{
    return ::WaitForSingleObject(event(), static_cast<DWORD>(limit.count())) == WAIT_OBJECT_0;
}

bool Transfer::stop()
{
    if (::WaitForSingleObject(event(), 0) == WAIT_OBJECT_0) {
        return true;
    }
    ::CancelIoEx(m_device, &m_memory->overlapped);
    return ::WaitForSingleObject(event(), kLongestStop) == WAIT_OBJECT_0;
}

Result<std::string> Transfer::end()
{
    const bool endedByItself = endsWithin(std::chrono::milliseconds::zero());
    if (!stop()) {
        static_cast<void>(m_memory.release()); // still the system's
        m_memory = std::make_unique<Memory>();
        m_device = nullptr;
        return systemError(ERROR_OPERATION_ABORTED);
    }
    DWORD count = 0;
    const BOOL done = ::GetOverlappedResult(std::exchange(m_device, nullptr), &m_memory->overlapped, &count, FALSE);
    const DWORD error = done != 0 ? ERROR_SUCCESS : ::GetLastError();
    if (error == ERROR_OPERATION_ABORTED && !endedByItself) {
        // How far it came stands in its memory alone.
        count = static_cast<DWORD>(m_memory->overlapped.InternalHigh);
    } else if (error != ERROR_SUCCESS) {
        return systemError(static_cast<int>(error));
    }
    return m_memory->bytes.substr(0, count);
}

} // namespace platform
