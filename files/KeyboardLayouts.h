#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace files {

// What the program knows about the keyboard layout that the reader is set to.
struct KeyboardLanguage
{
    // Sets of characters, each held once, in the order of the list: what the card sentinels look like when the reader
    // types them on this layout.
    std::string Track1Start;
    std::string Track2Start;
    std::string Track3Start;
    std::string TrackEnd;
    std::string name;
    bool layoutFlag = false;
};

// Looks the layout KeyboardLanguageId (four hex digits, the two keyboard ID bytes) up in the bytes of Languages.txt and
// brings language up to date. Returns the caption that lblLanguage gets, or nothing when the label stays as it is.
//
// One layout a line, by position: 1-4 the ID, matched exactly; 5, 6, 7 the start sentinels of tracks 1, 2, 3; 8 the end
// sentinel; 9 the flag, set by any character but a blank; from 10 on the name up to the first "(", of which the last
// character is always dropped (the blank before the remark). Lines of nine characters or fewer are ignored. Several
// lines may carry one ID: their sentinels are collected, the last one gives the name, the flag and the caption.
//
// list is nothing when there is no list that can be read: then only the name changes, to "Unknown". With a list the
// four sets are emptied first, so an ID that it does not hold leaves them empty and all else as it was. Never fails.
[[nodiscard]] std::optional<std::string>
readLayoutList(std::optional<std::string_view> list, std::string_view KeyboardLanguageId, KeyboardLanguage& language);

} // namespace files
