#include "platform/Registry.h"

#include <string>

namespace platform {

namespace {

// The low byte comes first. More bytes than a double word has do not belong to it.
std::uint32_t doubleWord(std::string_view bytes)
{
    std::uint32_t number = 0;
    for (std::size_t index = 0; index < bytes.size() && index < sizeof number; ++index) {
        number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[index])) << (8 * index);
    }
    return number;
}

} // namespace

std::string registryValueText(const RegistryValue& value)
{
    switch (value.type) {
    case kRegistryString:
        return value.bytes.substr(0, value.bytes.find('\0'));
    case kRegistryDoubleWord:
        return std::to_string(doubleWord(value.bytes));
    default:
        return value.bytes;
    }
}

} // namespace platform
