#pragma once

#include "platform/ProfileStrings.h"

#include <QList>
#include <QMargins>
#include <QRect>
#include <QString>
#include <QWidget>

// Where windows stood last time, kept in the settings file in a section for each window.
namespace widgets {

// Values of "WindowState" in the settings file.
enum WindowStateNumber : int { kNormalWindow = 0, kMinimisedWindow = 1, kMaximisedWindow = 2 };

// Reads the placement of the window with the given object name, in logical pixels. found is false, and the four numbers
// stay as they are, when the file holds none that can be used (no comma, or no area). state is normal unless stored.
void LoadWindowPlacement(const platform::ProfileStrings& settings, const QString& formName, int& left, int& top,
                         int& width, int& height, int& state, bool& found);

// Writes a window's placement. Of a maximised, minimised or full-screen window the normal place and size are kept. A
// file that cannot be written is no error.
void SaveWindowPlacement(platform::ProfileStrings& settings, const QWidget& form);

// Moves and resizes a window to where it stood last time, unless nobody could move it from there: then it is brought
// onto a screen. False, and the window as it was, when the file holds no placement that can be used. A window that is
// visible must be on screen already: the window system would take the place for that of the window without its frame.
bool restorePlacement(const platform::ProfileStrings& settings, QWidget& form);

// Where a window with that frame is put that is to stand at that place: there, when its title bar can be reached on one
// of the screens and its size is not beyond that of all screens together; otherwise whole onto the nearest screen. The
// screens are what of them windows may use, the first being the main one; the place is that of the frame's corner with
// the size without the frame. The size stays above the smallest in any case.
[[nodiscard]] QRect reachablePlace(const QRect& wanted, const QMargins& frame, const QSize& smallest,
                                   const QList<QRect>& screens);

// Makes a window that is not shown yet so small that it fits its screen with a frame around it: window managers
// maximise what is larger.
void leaveRoomForFrame(QWidget& form);

// Makes a window that is on screen smaller and moves it, as far as it stands out beyond its screen: the window system
// does not always count the frame.
void fitOntoScreen(QWidget& form);

} // namespace widgets
