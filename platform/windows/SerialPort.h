#pragma once

#include "platform/Result.h"
#include "platform/windows/Handle.h"
#include "platform/windows/Transfer.h"

#include <QObject>
#include <QTimer>
#include <QWinEventNotifier>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace platform {

// One serial port, open from construction by open() to close(). Reading never holds the program up: the system tells
// the event loop of the first byte, and what has come with it is fetched then.
class SerialPort final : public QObject
{
    Q_OBJECT

public:
    // A write may take as long as the given limit.
    explicit SerialPort(std::chrono::milliseconds longestWrite, QObject* parent = nullptr);
    ~SerialPort() override;

    // Opens the port raw at 9600 baud, 8 data bits, and throws away what it received before.
    [[nodiscard]] Result<void> open(const std::filesystem::path& path);
    void close();

    // Returns when the system has all bytes. An error when it has not taken them within the limit: what it has of them
    // is purged then, so that the beginning of a command does not stand before the next one.
    [[nodiscard]] Result<void> write(std::string_view bytes);

    // Both are called from the event loop. After a failure nothing more is read.
    void setOnReceived(std::function<void(std::string_view)> handler) { m_onReceived = std::move(handler); }
    void setOnFailed(std::function<void()> handler) { m_onFailed = std::move(handler); }

private:
    [[nodiscard]] Result<void> startReading();
    void goOnReading();
    void takeWhatCame();
    // What has come behind the byte that was waited for.
    [[nodiscard]] std::string fetchRest();

    std::chrono::milliseconds m_longestWrite;
    Handle m_port; // before the transfers that use it
    Transfer m_reading;
    QWinEventNotifier m_ended; // the read has ended
    QTimer m_pause;
    std::function<void(std::string_view)> m_onReceived;
    std::function<void()> m_onFailed;
};

} // namespace platform
