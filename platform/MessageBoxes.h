#pragma once

#include <filesystem>
#include <string>

namespace platform {

enum class BoxIcon { None, Information, Question, Exclamation, Critical };
enum class BoxButtons { Ok, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Yes, No, Cancel };

// One message box as the user sees it. Texts are Windows-1252 and always shown as plain text.
struct MessageBox
{
    std::string text;
    std::string title = {}; // empty = the program's title
    BoxIcon icon = BoxIcon::None;
    BoxButtons buttons = BoxButtons::Ok;
    BoxAnswer defaultButton = BoxAnswer::Ok; // the one that Enter presses
    // A file that the text names. The user sees its name with all its letters, also those that the text has only a '?'
    // for.
    std::filesystem::path file = {};
};

// Shows message boxes, one at a time and modal: events run while a box is up.
class MessageBoxes
{
public:
    virtual ~MessageBoxes() = default;

    // The button that the user pressed. Escape and the close box answer Cancel where there is one, else No, else Ok.
    virtual BoxAnswer show(const MessageBox& box) = 0;
};

} // namespace platform
