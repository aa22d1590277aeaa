#include "tables/KeyFilters.h"

namespace tables {

namespace {

constexpr int kBackspace = 8;
constexpr int kToUpperCase = 'a' - 'A';

} // namespace

// Kept behaviour kb-swallowed-keys: the keys of copying and selecting are no digits, so they do nothing.
int decimalKey(int KeyAscii)
{
    return KeyAscii == kBackspace || (KeyAscii >= '0' && KeyAscii <= '9') ? KeyAscii : 0;
}

int hexKey(int KeyAscii)
{
    if (KeyAscii >= 'A' && KeyAscii <= 'F') {
        return KeyAscii;
    }
    if (KeyAscii >= 'a' && KeyAscii <= 'f') {
        return KeyAscii - kToUpperCase;
    }
    return decimalKey(KeyAscii);
}

} // namespace tables
