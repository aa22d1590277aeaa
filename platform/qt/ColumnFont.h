#pragma once

#include <QFont>
#include <QString>

namespace platform {

// Whether columns of program text line up in a font: its letters, digits and signs are all equally wide, and so is what
// else it has of the code page. Characters that it lacks come from other fonts and are not looked at.
[[nodiscard]] bool hasColumns(const QFont& font);

// A font for columns: that of the given name, or what the system puts in its place, when it has columns; otherwise the
// first of the system's fonts that has. Measured, because the system's word for it, that a font is of fixed pitch, is
// missing from some that are and stands for a mere wish in a substitute. Of the toolkit's usual size.
[[nodiscard]] QFont columnFont(const QString& family);

} // namespace platform
