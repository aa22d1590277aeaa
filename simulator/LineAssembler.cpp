#include "simulator/LineAssembler.h"

#include <utility>

namespace simulator {

std::vector<LineAssembler::Line> LineAssembler::take(std::string_view bytes)
{
    std::vector<Line> lines;
    for (const char c : bytes) {
        if (c == '\n') {
            lines.push_back({takeRest(), true});
            continue;
        }
        m_rest += c;
        if (m_rest.size() == kLongestLine) {
            lines.push_back({takeRest(), false});
        }
    }
    return lines;
}

std::string LineAssembler::takeRest()
{
    return std::exchange(m_rest, {});
}

} // namespace simulator
