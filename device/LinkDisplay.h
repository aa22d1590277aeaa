#pragma once

#include <string_view>

namespace device {

enum class Identification { Driver, Firmware, Copyright };
enum class Shown { Nothing, ValueAlone, WithTitle };
enum class Lamp { Send, Recv };

// What shows the link to the reader: its port, its lamps, what driver and reader say about themselves, and how far a
// transfer has come. Texts are of the Windows-1252 code page.
class LinkDisplay
{
public:
    virtual ~LinkDisplay() = default;

    virtual void setPortText(std::string_view text) = 0; // second status panel
    virtual void setLamp(Lamp which, bool lit) = 0;

    // The value label of an identification. A driver caption that really changes is copied to the first status panel.
    virtual void setIdentification(Identification which, std::string_view caption) = 0;
    // Nothing and WithTitle mean both labels; ValueAlone leaves the title as it is.
    virtual void showIdentification(Identification which, Shown shown) = 0;
    // Looks up the reader's keyboard layout, parameters 081 and 082 as four digits, and shows its name.
    virtual void GetLanguageName(std::string_view KeyboardLanguageId) = 0;

    virtual void ShowPleaseWait() = 0;
    virtual void HidePleaseWait() = 0;

    // How far the transfer has come. What was shown last stays when it is over: it says whether every row was reached.
    virtual void showProgress(int rowsDone, int rows) = 0;
};

} // namespace device
