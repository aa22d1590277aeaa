#pragma once

class QGroupBox;

namespace tables {

// Gives a frame the layout that all frames of options share: one column, close enough that the tallest rows fit beside
// the grid in a small window.
void layOutInColumn(QGroupBox& frame);

} // namespace tables
