#pragma once

// The keys that the entry boxes take. Each function gets the code of a typed character and returns the code that goes
// into the box, 0 when the key is discarded. Backspace (8) always passes.
namespace tables {

// Digits and the letters A to F; a to f become upper case.
[[nodiscard]] int hexKey(int KeyAscii);

// Digits alone.
[[nodiscard]] int decimalKey(int KeyAscii);

} // namespace tables
