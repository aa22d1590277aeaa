#pragma once

#include <string_view>

namespace device {

// What shows the read test.
class ReadTestDisplay
{
public:
    virtual ~ReadTestDisplay() = default;

    // The test's text box. Lines end in carriage return and line feed; the caret ends up behind the text.
    virtual void setReadTestText(std::string_view text) = 0;
    virtual void appendReadTestText(std::string_view text) = 0;
    // Gives the box the keyboard, if it is on screen: what the reader types arrives there.
    virtual void focusReadTest() = 0;
    // The tables' notes are not about the test.
    virtual void hideNotesButton() = 0;
};

} // namespace device
