#pragma once

#include "platform/ProfileStrings.h"

#include <QRect>
#include <QString>
#include <QWidget>

// Where windows stood last time, kept in the settings file in a section for each window.
namespace app {

// Values of "WindowState" in the settings file.
enum WindowStateNumber : int { kNormalWindow = 0, kMinimisedWindow = 1, kMaximisedWindow = 2 };

// Reads the placement of the window with the given object name, in logical pixels. found is false, and the four numbers
// stay as they are, when the file holds none that can be used (no comma, or no area). state is normal unless stored.
void LoadWindowPlacement(const platform::ProfileStrings& settings, const QString& formName, int& left, int& top,
                         int& width, int& height, int& state, bool& found);

// Writes a window's placement. Of a maximised or minimised window the normal size is kept. A file that cannot be
// written is no error.
void SaveWindowPlacement(platform::ProfileStrings& settings, const QWidget& form);

// Moves and resizes a window to where it stood last time, but never to where no screen shows it. False, and the window
// as it was, when the file holds no placement that can be used. A window that is visible must be on screen already: the
// window system would take the place for that of the window without its frame.
bool restorePlacement(const platform::ProfileStrings& settings, QWidget& form);

} // namespace app
