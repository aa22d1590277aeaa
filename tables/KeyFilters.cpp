#include "tables/KeyFilters.h"

namespace tables {

namespace {

constexpr int kBackspace = 8;
constexpr int kToUpperCase = 'a' - 'A';

} // namespace

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
