#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace report {

// A report being written, line by line. A line is given as the pieces it is made of, in order; pieces may hold any
// byte.
class ReportText final
{
public:
    void line(std::string_view text) { line(std::initializer_list<std::string_view>{text}); }
    void line(std::initializer_list<std::string_view> pieces);
    void emptyLine() { line(std::string_view()); }

    // Everything written so far; each line ends in CR LF.
    [[nodiscard]] const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

} // namespace report
