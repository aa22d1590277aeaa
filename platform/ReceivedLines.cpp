#include "platform/ReceivedLines.h"

#include <cstddef>
#include <utility>

namespace platform {

namespace {

constexpr std::string_view kTerminators = "\r\n";

} // namespace

void ReceivedLines::append(std::string_view bytes)
{
    if (m_endedInCarriageReturn && m_bytes.empty() && !bytes.empty()) {
        if (bytes.front() == '\n') {
            bytes.remove_prefix(1);
        }
        m_endedInCarriageReturn = false;
    }
    m_bytes += bytes;
}

bool ReceivedLines::hasLine() const
{
    return m_bytes.find_first_of(kTerminators) != std::string::npos;
}

std::string ReceivedLines::takeLine()
{
    const std::size_t end = m_bytes.find_first_of(kTerminators);
    std::string line = m_bytes.substr(0, end + 1);
    m_bytes.erase(0, end + 1);
    m_endedInCarriageReturn = line.back() == '\r';
    if (m_endedInCarriageReturn && !m_bytes.empty()) {
        if (m_bytes.front() == '\n') {
            m_bytes.erase(0, 1);
        }
        m_endedInCarriageReturn = false;
    }
    return line;
}

std::string ReceivedLines::takeAll()
{
    m_endedInCarriageReturn = false;
    return std::exchange(m_bytes, {});
}

void ReceivedLines::clear()
{
    m_bytes.clear();
    m_endedInCarriageReturn = false;
}

} // namespace platform
