#include "text/TextLines.h"

#include <cstddef>

namespace text {

namespace {

constexpr bool isLineEnd(char c)
{
    return c == '\r' || c == '\n';
}

} // namespace

TextLines::TextLines(std::string_view bytes)
    : m_rest(bytes)
{}

std::optional<std::string_view> TextLines::next()
{
    if (m_rest.empty()) {
        return std::nullopt;
    }
    std::size_t length = 0;
    while (length < m_rest.size() && !isLineEnd(m_rest[length])) {
        ++length;
    }
    const std::string_view line = m_rest.substr(0, length);
    m_rest.remove_prefix(length);
    if (!m_rest.empty()) {
        m_rest.remove_prefix(m_rest.starts_with("\r\n") ? 2 : 1);
    }
    return line;
}

} // namespace text
