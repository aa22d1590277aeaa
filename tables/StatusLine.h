#pragma once

#include <string_view>

namespace tables {

// The one line in which the program says what it is doing: commands sent, a byte in binary, the end of a transfer.
class StatusLine
{
public:
    virtual ~StatusLine() = default;

    // Replaces what the line says. The text is one of the Windows-1252 code page.
    virtual void setStatusText(std::string_view text) = 0;
};

} // namespace tables
