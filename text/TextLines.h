#pragma once

#include <optional>
#include <string_view>

namespace text {

// Walks through the lines of a text file's bytes. CR LF, LF alone and CR alone each end a line; bytes behind the last
// line end are a line too. Every other byte, the NUL included, is part of its line. The time needed is proportional to
// the number of bytes, however long or short the lines are.
class TextLines final
{
public:
    // The bytes must outlive this object and the lines it hands out.
    explicit TextLines(std::string_view bytes);

    // The next line without its line end; nothing once all bytes are used up.
    [[nodiscard]] std::optional<std::string_view> next();

private:
    std::string_view m_rest;
};

} // namespace text
