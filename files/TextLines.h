#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace files {

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
    std::string_view m_bytes;
    std::size_t m_at = 0;
    // The next CR and the next LF are remembered so that a file with only one of them is not searched to its end for
    // the other on every line.
    std::size_t m_nextCr;
    std::size_t m_nextLf;
};

} // namespace files
