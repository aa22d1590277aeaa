#include "files/KeyboardLayouts.h"

#include "text/TextLines.h"

#include <cstddef>

namespace files {

namespace {

constexpr std::size_t kIdLength = 4;
constexpr std::size_t kTrack1StartAt = 4;
constexpr std::size_t kTrack2StartAt = 5;
constexpr std::size_t kTrack3StartAt = 6;
constexpr std::size_t kTrackEndAt = 7;
constexpr std::size_t kFlagAt = 8;
constexpr std::size_t kNameAt = 9;

void addOnce(std::string& set, char character)
{
    if (set.find(character) == std::string::npos) {
        set += character;
    }
}

// The list is written with a blank before the remark (or at the end of the line), so the last character goes whether or
// not there was a remark.
std::string_view withoutRemark(std::string_view text)
{
    std::string_view name = text.substr(0, text.find('('));
    if (!name.empty()) {
        name.remove_suffix(1);
    }
    return name;
}

} // namespace

std::optional<std::string> readLayoutList(std::optional<std::string_view> list, std::string_view KeyboardLanguageId,
                                          KeyboardLanguage& language)
{
    if (!list) {
        language.name = "Unknown";
        return std::nullopt;
    }
    // Kept behaviour kb-no-headings: for a layout that is not in the list the sets stay empty, and the name stays.
    language.Track1Start.clear();
    language.Track2Start.clear();
    language.Track3Start.clear();
    language.TrackEnd.clear();

    std::optional<std::string> caption;
    text::TextLines lines(*list);
    while (const auto line = lines.next()) {
        if (line->size() <= kNameAt || line->substr(0, kIdLength) != KeyboardLanguageId) {
            continue;
        }
        addOnce(language.Track1Start, (*line)[kTrack1StartAt]);
        addOnce(language.Track2Start, (*line)[kTrack2StartAt]);
        addOnce(language.Track3Start, (*line)[kTrack3StartAt]);
        addOnce(language.TrackEnd, (*line)[kTrackEndAt]);
        language.layoutFlag = (*line)[kFlagAt] != ' ';
        language.name = withoutRemark(line->substr(kNameAt));
        caption = language.name + " (Code: " + std::string(KeyboardLanguageId) + ")";
    }
    return caption;
}

} // namespace files
