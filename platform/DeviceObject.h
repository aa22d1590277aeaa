#pragma once

#include "platform/DosNames.h"
#include "platform/Result.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace platform {

// How long a device object may take. The defaults are the product's values; tests shorten them.
struct DeviceObjectLimits
{
    std::chrono::milliseconds firstByte{2000}; // until the driver begins to answer, or takes what is written
    std::chrono::milliseconds quiet{50};       // of silence that end an answer once it has begun
    std::chrono::milliseconds breath{20};      // between two calls of the handler that is told of a wait
};

// The driver's device object: a door that is opened like a file, written to once and read from once. It may be a
// device, a terminal or a plain file. Calls wait within the limits.
class DeviceObject
{
public:
    virtual ~DeviceObject() = default;
    DeviceObject(const DeviceObject&) = delete;
    DeviceObject& operator=(const DeviceObject&) = delete;

    // Opens an existing device object for reading and writing by its DOS name (see DosNames) and throws away what it
    // sent while nobody listened. Nothing is ever created. What was open before is closed.
    [[nodiscard]] virtual Result<void> open(std::string_view dosName) = 0;

    // Writes all bytes as they are. An error when the driver takes none of them for as long as the first-byte limit.
    [[nodiscard]] virtual Result<void> write(std::string_view bytes) = 0;

    // Reads one answer of at most the given number of bytes. It has ended when that many have come, when a control
    // character follows a "COM" in it, or at the first silence as long as the quiet limit. Silence from the start and a
    // hang-up at any time are errors; the end of a plain file is none and gives what there was, possibly nothing.
    [[nodiscard]] virtual Result<std::string> read(std::size_t most) = 0;

    // Does nothing when it is not open.
    virtual void close() = 0;

    // Called at the start of every wait and then again and again while it lasts, so that somebody can keep a window
    // painted meanwhile. Must not use the device object.
    void setWhileWaiting(std::function<void()> handler) { m_whileWaiting = std::move(handler); }

protected:
    DeviceObject() = default;

    void whileWaiting() const
    {
        if (m_whileWaiting) {
            m_whileWaiting();
        }
    }

private:
    std::function<void()> m_whileWaiting;
};

// The system's device object, not open yet.
[[nodiscard]] std::unique_ptr<DeviceObject> makeDeviceObject(DosNames names, DeviceObjectLimits limits = {});

} // namespace platform
