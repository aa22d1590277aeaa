#include "app/startup/ProgramText.h"

#include <initializer_list>

namespace app {

namespace {

std::string joined(std::initializer_list<std::string_view> lines)
{
    std::string text;
    for (const std::string_view line : lines) {
        if (!text.empty()) {
            text += "\r\n";
        }
        text += line;
    }
    return text;
}

} // namespace

std::string notesOnConfiguration()
{
    return joined({
        "1. Select the \"Keyboard Language\" tab to review the keyboard",
        "     scan code entries.",
        "2. The Keyboard Language tab contains the addresses 080 to 114.",
        "3. Any other address not shown is reserved for future use.",
        "4. Parameter 01B: A special character is any character with an ASCII.",
        "     value less than 0x20.",
        "5. Parameter 027: The Command prefix must not be set to a character",
        "     that could appear in a command since a new command is started",
        "     whenever this character is detected.",
        "6  Double-clicking a value in the table allows you to send that one",
        "     value to the Teslin.",
    });
}

std::string notesOnKeyboardLanguage()
{
    return joined({
        "1. Select the \"Configuration\" tab to review the general",
        "     configuration entries.",
        "2. The Configuration tab contains the addresses 001 to 02D.",
        "3. Any other address not shown is reserved for future use.",
        "4. The parameters at address 081 and above are shown in pairs.",
        "     * The leftmost address corresponds to the leftmost parameter.",
        "     * The rightmost address corresponds to the rightmost parameter.",
        "5. Each of the parameter pairs from 083 to 113 have a bit field and",
        "     a scan code value.",
        "6. Double-clicking a value in the table allows you to send that one",
        "     value to the Teslin.",
    });
}

std::string briefHelp()
{
    return joined({
        "Read the Teslin\x99 Swipe Reader Technical Manual (P/N 60044718) for details.",
        "Connect Teslin and click the Retrieve button to download current values.",
        "Click the Update button to send edited values back to the Teslin.",
    });
}

std::string readTestInstruction()
{
    return "When the Teslin's light turns green, please read your cards.  To exit this mode, click on either the "
           "Configuration or the Keyboard Language tab above.";
}

std::string driverMissing()
{
    constexpr std::string_view kNotInstalled =
        "The Teslin KSD driver needs to be loaded before this program will work.  You may look at the program but "
        "nothing will be functional until the driver is installed.";
    return joined({
        kNotInstalled,
        "The KSD driver can be obtained at " + std::string(kSupportAddress) + ":",
        "Part Number:\t60051410 for Windows 95/98 and ME",
        "\t\t60051411 for Windows NT",
        "\t\t60051412 for Windows 2K and XP",
    });
}

} // namespace app
