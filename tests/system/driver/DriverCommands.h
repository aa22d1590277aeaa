#pragma once

#include <QString>

namespace windowdriver {

// Carries out one command line and gives the answer, one line: "ok", "ok TEXT" or "error REASON". Texts are written as
// in LineText.h. Returns at once: what the command set off happens in the program's event loop afterwards.
[[nodiscard]] QString carryOut(const QString& line);

} // namespace windowdriver
