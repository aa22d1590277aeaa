#pragma once

#include <string_view>

namespace tables {

// What the two field editors need of the window around them.
class EditorHost
{
public:
    virtual ~EditorHost() = default;

    // Hides the controls of both field editors, not their titles.
    virtual void Hide_All() = 0;
    // Puts a text into the first status panel.
    virtual void setStatusText(std::string_view text) = 0;
    // A scan code pair has a place for the Configuration editor's line of words and leaves it empty.
    virtual void showEmptyDecEntry() = 0;
};

} // namespace tables
