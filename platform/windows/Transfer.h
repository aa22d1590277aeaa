#pragma once

#include "platform/Result.h"
#include "platform/windows/Handle.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

// Reads and writes of a device that the system carries out while the program goes on, one at a time. The device was
// opened for overlapped transfers and stays open while one runs.
class Transfer final
{
public:
    Transfer();
    ~Transfer(); // stops what still runs
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    // Starts one; an error when the system refuses it at once. The position counts for plain files alone.
    [[nodiscard]] Result<void> startReading(const Handle& device, std::size_t most, std::uint64_t position = 0);
    [[nodiscard]] Result<void> startWriting(const Handle& device, std::string_view bytes, std::uint64_t position = 0);

    // Set by the system when the transfer has ended.
    [[nodiscard]] HANDLE event() const;
    [[nodiscard]] bool isRunning() const { return m_device != nullptr; }
    // False when the limit passes first.
    [[nodiscard]] bool endsWithin(std::chrono::milliseconds limit) const;

    // Ends the transfer, by force where the system has not ended it. What was read, or of a write what was written;
    // one that was stopped half-way gives what it has done. The system's error when it failed.
    [[nodiscard]] Result<std::string> end();

private:
    struct Memory;

    // Takes the result of the call that starts it.
    [[nodiscard]] Result<void> started(const Handle& device, BOOL result);
    void prepare(std::uint64_t position);
    // False when the driver does not even end what it was told to give up.
    [[nodiscard]] bool stop();

    std::unique_ptr<Memory> m_memory;
    HANDLE m_device = nullptr; // of the transfer that runs
};

} // namespace platform
