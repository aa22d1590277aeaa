#pragma once

#include "platform/qt/QtSerialControl.h"
#include "tests/platform/PseudoTerminal.h"
#include "tests/platform/TestFiles.h"

#include <memory>
#include <string>
#include <vector>

namespace test {

// A serial control and the driver behind its port COM5. Every receive event takes its line.
struct SerialLine
{
    SerialLine()
    {
        plugIn();
        control.setOnComm([this] { lines.push_back(control.Input()); });
        control.setOnConnectionLost([this] { ++losses; });
        if (!control.setCommPort(5)) {
            qFatal("port 5 is refused");
        }
    }

    // A new terminal takes the place of the port's old one.
    void plugIn()
    {
        terminal = std::make_unique<PseudoTerminal>();
        std::filesystem::remove(folder / "com5");
        std::filesystem::create_symlink(terminal->path(), folder / "com5");
    }

    // Opens the port with receive events; false when it does not open.
    [[nodiscard]] bool open()
    {
        control.setRThreshold(1);
        return control.setPortOpen(true) && control.PortOpen();
    }

    TemporaryFolder folder;
    platform::DosNames names{folder.path()};
    std::unique_ptr<PseudoTerminal> terminal;
    std::vector<std::string> lines;
    int losses = 0;
    platform::QtSerialControl control{names};
};

} // namespace test
