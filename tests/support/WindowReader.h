#pragma once

#include "platform/DeviceObject.h"
#include "platform/SerialControl.h"
#include "platform/qt/ReceiveEvents.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QTimer>

#include <functional>
#include <optional>
#include <string>

namespace testsupport {

// A reader and its driver for tests of the real window: answers each command from the event loop, as the port would.
class WindowReader final : public platform::SerialControl
{
public:
    // The reply line without its end, or nothing for silence.
    using Answers = std::function<std::optional<std::string>(const std::string& command)>;

    Answers answers;
    QByteArrayList commands;           // all that were sent, without their line feeds
    std::function<void(int)> onOutput; // told the number of commands so far, before the answer is on its way
    bool opens = true;
    bool staysClosed = false; // opening succeeds, but the port is not open

    void hangUp()
    {
        m_isLost = true;
        if (m_onConnectionLost) {
            m_onConnectionLost();
        }
    }

    platform::Result<void> setCommPort(int number) override
    {
        port = number;
        return {};
    }
    [[nodiscard]] bool PortOpen() const override { return m_isOpen; }
    platform::Result<void> setPortOpen(bool open) override
    {
        if (open && !opens) {
            return platform::SystemError{.number = 2, .description = "No such file or directory"};
        }
        m_isOpen = open && !staysClosed;
        m_isLost = false;
        m_received.clear();
        return {};
    }
    void setRThreshold(int threshold) override { m_received.setRThreshold(threshold); }
    void setInputLen([[maybe_unused]] int length) override {}
    [[nodiscard]] int InBufferCount() const override { return m_received.InBufferCount(); }
    [[nodiscard]] std::string Input() override { return m_received.Input(); }
    void Output(std::string_view bytes) override
    {
        if (!m_isOpen || m_isLost) {
            return;
        }
        const std::string command(bytes.substr(0, bytes.size() - 1));
        commands.append(QByteArray::fromStdString(command));
        if (onOutput) {
            onOutput(static_cast<int>(commands.size()));
        }
        const std::optional<std::string> reply = answers ? answers(command) : std::nullopt;
        if (reply) {
            QTimer::singleShot(0, &m_received, [this, line = *reply + "\n"] {
                if (m_isOpen && !m_isLost) {
                    m_received.append(line);
                }
            });
        }
    }
    [[nodiscard]] int CommEvent() const override { return m_received.CommEvent(); }
    void setOnComm(std::function<void()> handler) override { m_received.setOnComm(std::move(handler)); }
    void setOnConnectionLost(std::function<void()> handler) override { m_onConnectionLost = std::move(handler); }

    int port = 0;

private:
    platform::ReceiveEvents m_received;
    std::function<void()> m_onConnectionLost;
    bool m_isOpen = false;
    bool m_isLost = false;
};

// The driver's device object: names a port, or does not open. It may be silent for a while first.
class WindowDriver final : public platform::DeviceObject
{
public:
    bool opens = true;
    std::string answer = "/get port_name=COM5\r";
    std::string openedName;
    std::function<void(const char* call)> onCall;
    std::function<void()> onOpen;
    // What happens while the driver is silent; `breathe` is what a device object does again and again meanwhile.
    std::function<void(const std::function<void()>& breathe)> silence;

    platform::Result<void> open(std::string_view dosName) override
    {
        called("open");
        openedName = dosName;
        if (onOpen) {
            onOpen();
        }
        return opens ? platform::Result<void>() : platform::SystemError{.number = 2, .description = "No such file"};
    }
    platform::Result<void> write([[maybe_unused]] std::string_view bytes) override
    {
        called("write");
        return {};
    }
    platform::Result<std::string> read([[maybe_unused]] std::size_t most) override
    {
        called("read");
        if (silence) {
            silence([this] { whileWaiting(); });
        }
        return answer;
    }
    void close() override { called("close"); }

private:
    void called(const char* call)
    {
        if (onCall) {
            onCall(call);
        }
    }
};

} // namespace testsupport
