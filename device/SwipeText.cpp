#include "device/SwipeText.h"

#include "text/Parsings.h"

#include <utility>

namespace device {

namespace {

constexpr const char* kNewHeading = "\r\n\r\n";

bool holds(const std::string& set, char ch)
{
    return set.find(ch) != std::string::npos;
}

std::string headingFor(char ch, const SentinelSets& sets)
{
    if (holds(sets.Track1Start, ch)) {
        return std::string(kNewHeading) + "Track1: ";
    }
    if (holds(sets.Track2Start, ch)) {
        return std::string(kNewHeading) + "Track2: ";
    }
    if (holds(sets.Track3Start, ch)) {
        return std::string(kNewHeading) + "Track3: ";
    }
    return {};
}

} // namespace

SwipeText::Typed SwipeText::keyPress(char typed, const SentinelSets& sets)
{
    m_readKeySeen = true;
    const char ch = typed == ' ' ? kVisibleBlank : typed;
    std::string heading;
    // Kept behaviour kb-open-track: a start character inside a track gets no heading, even after a broken swipe.
    if (m_inTrack) {
        m_inTrack = !holds(sets.TrackEnd, ch);
    } else {
        heading = headingFor(ch, sets);
        m_inTrack = !heading.empty();
    }
    m_readRawBuffer += ch;
    return {.heading = std::move(heading), .shown = ch};
}

std::optional<std::string> SwipeText::takeRawBlock()
{
    if (!std::exchange(m_readKeySeen, false)) {
        return std::nullopt;
    }
    std::string raw = std::exchange(m_readRawBuffer, {});
    text::NameControlChars(raw);
    return "\r\nRaw Data: " + raw;
}

} // namespace device
