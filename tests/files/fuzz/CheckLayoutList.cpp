#include "files/KeyboardLayouts.h"
#include "tests/files/fuzz/Properties.h"
#include "tests/files/fuzz/Require.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace fuzz {

namespace {

using files::KeyboardLanguage;

bool same(const KeyboardLanguage& one, const KeyboardLanguage& other)
{
    return one.Track1Start == other.Track1Start && one.Track2Start == other.Track2Start &&
           one.Track3Start == other.Track3Start && one.TrackEnd == other.TrackEnd && one.name == other.name &&
           one.layoutFlag == other.layoutFlag;
}

void requireSet(const std::string& characters, bool found)
{
    require(std::set<char>(characters.begin(), characters.end()).size() == characters.size(),
            "a sentinel is held once");
    require(!hasLineEnd(characters), "a line end is no sentinel");
    require(characters.empty() != found, "the sets are filled exactly when the layout is found");
}

void checkLayout(std::string_view bytes, std::string_view id)
{
    const KeyboardLanguage earlier{.Track1Start = "1",
                                   .Track2Start = "2",
                                   .Track3Start = "3",
                                   .TrackEnd = "E",
                                   .name = "earlier(",
                                   .layoutFlag = true};
    KeyboardLanguage language = earlier;
    const std::optional<std::string> caption = files::readLayoutList(bytes, id, language);
    requireSet(language.Track1Start, caption.has_value());
    requireSet(language.Track2Start, caption.has_value());
    requireSet(language.Track3Start, caption.has_value());
    requireSet(language.TrackEnd, caption.has_value());
    if (caption) {
        require(*caption == language.name + " (Code: " + std::string(id) + ")", "the caption shows name and ID");
        require(language.name.find('(') == std::string::npos, "the remark is no part of the name");
        require(!hasLineEnd(language.name), "a name holds no line end");
    } else {
        require(language.name == earlier.name && language.layoutFlag, "an ID not found leaves name and flag");
    }
    if (bytes.find('\r') == std::string_view::npos) {
        KeyboardLanguage windows = earlier;
        require(files::readLayoutList(withLineEnds(bytes, "\r\n"), id, windows) == caption && same(windows, language),
                "CR LF reads as LF does");
    }
    // Every line a second time changes nothing.
    KeyboardLanguage twice = earlier;
    const std::string doubled = std::string(bytes) + "\n" + std::string(bytes);
    require(files::readLayoutList(doubled, id, twice) == caption && same(twice, language), "a list twice is the list");
}

} // namespace

void checkLayoutList(std::string_view bytes)
{
    checkLayout(bytes, "0409");
    checkLayout(bytes, bytes.substr(0, 4));
}

} // namespace fuzz
