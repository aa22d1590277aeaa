#include "report/ReportText.h"

namespace report {

void ReportText::line(std::initializer_list<std::string_view> pieces)
{
    for (const std::string_view piece : pieces) {
        m_text += piece;
    }
    m_text += "\r\n";
}

} // namespace report
