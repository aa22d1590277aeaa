#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace fuzz {

inline void require(bool holds, const char* property)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", property);
        std::abort();
    }
}

inline bool hasLineEnd(std::string_view text)
{
    return text.find_first_of("\r\n") != std::string_view::npos;
}

// The bytes with every LF replaced by another line end.
inline std::string withLineEnds(std::string_view bytes, std::string_view lineEnd)
{
    std::string changed;
    for (const char c : bytes) {
        if (c == '\n') {
            changed += lineEnd;
        } else {
            changed += c;
        }
    }
    return changed;
}

} // namespace fuzz
