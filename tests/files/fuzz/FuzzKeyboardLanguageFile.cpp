#include "tests/files/fuzz/Properties.h"

#include <cstddef>
#include <cstdint>

// NOLINTNEXTLINE: the name and the form are the fuzzer's
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::checkKeyboardLanguageFile({reinterpret_cast<const char*>(data), size});
    return 0;
}
