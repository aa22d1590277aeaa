#pragma once

#include <QColor>
#include <QPalette>

// Colours that are seen on what they stand on, whatever palette the desktop has.
namespace widgets {

// The ratio of the luminances of two colours, 1 to 21, as the guidelines for accessible contents define it.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

// The colour itself, or as much of the other mixed in as it takes to be seen as a shape on the ground. When not even
// the other is: the other.
[[nodiscard]] QColor seenOn(const QColor& ground, const QColor& color, const QColor& other);

// The ground itself, or as much darker or lighter as it takes for the text to be read on it.
[[nodiscard]] QColor groundOf(const QColor& text, const QColor& ground);

// Nothing darker is seen on it.
[[nodiscard]] bool isNearlyBlack(const QColor& color);

// For the outline of a control on a window. On a black window it is the text's own colour, as palettes of high contrast
// want it.
[[nodiscard]] QColor outlineOf(const QPalette& palette);

// For a round outline one pixel thin: it is painted fainter than a line that fills its pixels.
[[nodiscard]] QColor ringOf(const QPalette& palette);

} // namespace widgets
