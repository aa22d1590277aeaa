#pragma once

#include <string>

namespace text {

// Replaces the control characters 1 to 31 in s by their names ("<SOH>" to "<US>"); every other character, the NUL
// included, stays as it is.
void NameControlChars(std::string& s);

} // namespace text
