#pragma once

#include <optional>
#include <string>

namespace device {

// The characters that open and close a track on the reader's present keyboard layout. Sets, in no order.
struct SentinelSets
{
    std::string Track1Start;
    std::string Track2Start;
    std::string Track3Start;
    std::string TrackEnd;
};

// Turns the keystrokes of a swiped card into what the read test shows. Knows nothing of a window.
class SwipeText final
{
public:
    // Blanks are shown, and kept, as this character, so that they can be seen.
    static constexpr char kVisibleBlank = '\x95';

    struct Typed
    {
        std::string heading; // to be shown before the character; empty inside a track
        char shown = 0;      // the character itself
    };
    // The reader has typed a character.
    [[nodiscard]] Typed keyPress(char typed, const SentinelSets& sets);

    // The reader has paused. The raw characters since the last pause as a block to be shown, control characters by
    // name; nothing when nothing was typed since.
    [[nodiscard]] std::optional<std::string> takeRawBlock();

    // Forgets the raw characters; whether a track is open stays known.
    void emptyRawBuffer() { m_readRawBuffer.clear(); }

private:
    std::string m_readRawBuffer;
    bool m_inTrack = false;
    bool m_readKeySeen = false;
};

} // namespace device
