#include "app/startup/CommandLineAnswer.h"

#include "app/startup/ProgramVersion.h"

#include <string_view>

namespace app {

namespace {

constexpr std::string_view kHelp =
    R"(Usage: TeslinConfigure [R]
       TeslinConfigure --help
       TeslinConfigure --version

Configures the Teslin, a keyboard-wedge magnetic stripe card reader: reads its
parameters into two tables, shows and edits them, writes them back, keeps them
in files, reports them, and tests what the reader types for a card.

  R            start with the read test; only the first letter counts, R or r
  --help       print this text and end
  --version    print the version and end

Options of the Qt toolkit, such as -platform and -style, work too. All other
arguments are ignored.

Environment:
  TESLIN_DOSDEVICES
               the folder in which the program looks up the names of the driver
               and its port; ~/.teslin/dosdevices when this is not set. Its
               entries are in lower case: teslin leads to the driver's device
               object, com5 to the port COM5, c: to the folder that stands for
               drive C. Windows knows these names itself and needs no folder.

Files:
  TeslinConfigure.INI
               the settings: the driver's name, the port and where the window
               was. Beside the program when that folder can be written, else in
               the user's folder for settings,
               ~/.config/TeslinConfigure.
  Languages.txt
               the names of the keyboard layouts, beside the program or where
               it was installed. Without it layouts have no names.
)";

} // namespace

std::optional<std::string> answerToCommandLine(std::span<const char* const> arguments)
{
    for (const std::string_view argument : arguments) {
        if (argument == "--help") {
            return std::string(kHelp);
        }
        if (argument == "--version") {
            return versionOnCommandLine(programVersion()) + '\n';
        }
    }
    return std::nullopt;
}

} // namespace app
