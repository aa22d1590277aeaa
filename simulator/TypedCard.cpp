#include "simulator/TypedCard.h"

#include "text/HexText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace simulator {

namespace {

constexpr std::size_t kTracks = 3;
constexpr char kEndSentinel = '?';

constexpr std::uint8_t kAllCardTypes = 0x80; // of 013
constexpr std::uint8_t kTrackBits = 0x03;    // of 013, for track 1; the others follow
constexpr std::uint8_t kDisabled = 0;
constexpr std::uint8_t kRequired = 2;

constexpr std::uint8_t kErrorBits = 0x03; // of 014
constexpr std::uint8_t kNothingOnError = 0;
constexpr std::uint8_t kLetterOnError = 3;
constexpr std::uint8_t kLowerCase = 0x04;
constexpr std::uint8_t kLrc = 0x10;
constexpr std::uint8_t kSendEnd = 0x20;
constexpr std::uint8_t kSendStart = 0x40;

constexpr std::uint8_t kPerTrack = 0x80; // of 022

// The tracks 1, 2, 3 of the stripe are reported as these; by the number in 02A.
constexpr std::array<std::array<std::size_t, kTracks>, 6> kMappings = {
    {{1, 2, 3}, {3, 2, 1}, {2, 1, 3}, {1, 3, 2}, {2, 3, 1}, {3, 1, 2}}};

std::uint8_t byteAt(const ParameterMemory& memory, std::string_view address)
{
    return text::hexByte(memory.value(address).value_or("00"));
}

// 00 means that nothing is sent.
std::string characterAt(const ParameterMemory& memory, std::string_view address)
{
    const std::uint8_t byte = byteAt(memory, address);
    return byte == 0 ? std::string() : std::string(1, static_cast<char>(byte));
}

bool isOfDigits(TrackFormat format)
{
    return format == TrackFormat::Track2Iso || format == TrackFormat::Track3Iso;
}

std::string startSentinel(TrackFormat format, const ParameterMemory& memory)
{
    switch (format) {
    case TrackFormat::Track1:
        return "%";
    case TrackFormat::Track2Iso:
        return ";";
    case TrackFormat::Track2SevenBit:
        return characterAt(memory, "015");
    case TrackFormat::Track3Iso:
        return characterAt(memory, "017");
    case TrackFormat::Track3Aamva:
        return characterAt(memory, "018");
    case TrackFormat::Track3SevenBit:
        return characterAt(memory, "019");
    }
    return {};
}

// The check character of the stripe: all codes of the track, its sentinels among them, combined by "exclusive or".
char checkCharacter(const SampleTrack& track)
{
    const bool digits = isOfDigits(track.format);
    const int base = digits ? '0' : ' ';
    int check = (digits ? ';' : '%') - base;
    for (const char c : track.data) {
        check ^= c - base;
    }
    check ^= kEndSentinel - base;
    return static_cast<char>(check + base);
}

std::string inLowerCase(std::string text)
{
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

std::string typedTrack(const SampleTrack& track, const ParameterMemory& memory)
{
    const std::uint8_t flags = byteAt(memory, "014");
    std::string text;
    if ((flags & kSendStart) != 0) {
        text += startSentinel(track.format, memory);
    }
    const std::string data(track.data);
    text += (flags & kLowerCase) != 0 ? inLowerCase(data) : data;
    if ((flags & kSendEnd) != 0) {
        text += kEndSentinel;
    }
    if ((flags & kLrc) != 0) {
        text += checkCharacter(track);
    }
    return text;
}

// The tracks in the order in which they are reported; nullptr where the card has none.
std::array<const SampleTrack*, kTracks> reportedTracks(const SampleCard& card, const ParameterMemory& memory)
{
    const std::size_t mapping = byteAt(memory, "02A") & 0x07U;
    std::array<const SampleTrack*, kTracks> reported{};
    for (const SampleTrack& track : card.tracks) {
        const auto number = static_cast<std::size_t>(track.number);
        reported[(mapping < kMappings.size() ? kMappings[mapping][number - 1] : number) - 1] = &track;
    }
    return reported;
}

// What is typed for each track, if anything. Nothing at all when a bad card is to be kept back.
std::vector<std::string> typedTracks(const SampleCard& card, const ParameterMemory& memory)
{
    const std::uint8_t enables = byteAt(memory, "013");
    const std::uint8_t onError = byteAt(memory, "014") & kErrorBits;
    if (!card.isIso && (enables & kAllCardTypes) == 0) {
        return {};
    }
    std::vector<std::string> typed;
    std::size_t number = 0;
    for (const SampleTrack* track : reportedTracks(card, memory)) {
        const int setting = (enables >> (2 * number++)) & kTrackBits;
        if (setting != kDisabled && track != nullptr) {
            typed.push_back(typedTrack(*track, memory));
        } else if (setting == kRequired && onError == kNothingOnError) {
            return {};
        } else if (setting == kRequired && onError == kLetterOnError) {
            typed.emplace_back("E");
        }
    }
    return typed;
}

} // namespace

std::string typedCard(const SampleCard& card, const ParameterMemory& memory)
{
    const std::vector<std::string> tracks = typedTracks(card, memory);
    if (tracks.empty()) {
        return {};
    }
    const std::uint8_t ending = byteAt(memory, "022");
    const bool perTrack = (ending & kPerTrack) != 0;
    const auto character = static_cast<char>(ending & ~kPerTrack);
    const std::string terminator = character == '\0' ? std::string() : std::string(1, character);

    std::string text = characterAt(memory, "01C") + characterAt(memory, "01D");
    for (const std::string& track : tracks) {
        text += characterAt(memory, "020") + track + characterAt(memory, "021") + (perTrack ? terminator : "");
    }
    return text + characterAt(memory, "01E") + characterAt(memory, "01F") + (perTrack ? "" : terminator);
}

} // namespace simulator
