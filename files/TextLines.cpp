#include "files/TextLines.h"

#include <algorithm>

namespace files {

TextLines::TextLines(std::string_view bytes)
    : m_bytes(bytes)
    , m_nextCr(bytes.find('\r'))
    , m_nextLf(bytes.find('\n'))
{}

std::optional<std::string_view> TextLines::next()
{
    if (m_at == m_bytes.size()) {
        return std::nullopt;
    }
    if (m_nextCr < m_at) {
        m_nextCr = m_bytes.find('\r', m_at);
    }
    if (m_nextLf < m_at) {
        m_nextLf = m_bytes.find('\n', m_at);
    }
    const std::size_t end = std::min({m_nextCr, m_nextLf, m_bytes.size()});
    const std::string_view line = m_bytes.substr(m_at, end - m_at);
    m_at = end;
    if (m_at == m_nextCr) {
        ++m_at;
    }
    if (m_at == m_nextLf) {
        ++m_at;
    }
    return line;
}

} // namespace files
