#pragma once

#include "platform/ReceivedLines.h"

#include <QObject>

#include <functional>
#include <string>
#include <string_view>

namespace platform {

// The receiving half of a serial control: what arrived, and the receive events that announce complete lines. Events
// come from the event loop, one a line, in order, and never from inside append(): their handlers may open boxes and
// wait.
class ReceiveEvents final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void append(std::string_view bytes);
    void clear();

    // 1: events for complete lines, those already here included. 0: none.
    void setRThreshold(int threshold);

    // The line of the present event with its terminator, if it was not taken yet; else everything received.
    [[nodiscard]] std::string Input();
    [[nodiscard]] int InBufferCount() const { return m_lines.size(); }
    [[nodiscard]] int CommEvent() const { return m_commEvent; }

    void setOnComm(std::function<void()> handler) { m_onComm = std::move(handler); }

private:
    void announceLater();
    void announceOne();

    ReceivedLines m_lines;
    std::string m_announced; // the line of the present event
    std::function<void()> m_onComm;
    int m_threshold = 0;
    int m_commEvent = 0;
    bool m_isAnnouncing = false; // a queued call is under way
};

} // namespace platform
