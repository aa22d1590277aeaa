#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Predefined root keys and types of values, as the registry numbers them.
constexpr std::uint32_t kLocalMachine = 0x80000002;
constexpr std::uint32_t kRegistryString = 1;
constexpr std::uint32_t kRegistryDoubleWord = 4;

struct RegistryValue
{
    std::uint32_t type = 0;
    std::string bytes; // as stored: texts in Windows-1252 with their terminators, numbers with the low byte first
};

// The system's registry, for reading. Systems that have none find nothing.
class Registry
{
public:
    // Values above this size are not read.
    static constexpr std::uint32_t kLargestValue = 1024;

    virtual ~Registry() = default;
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    // Nothing when the key or the value does not exist or cannot be read.
    [[nodiscard]] virtual std::optional<RegistryValue> read(std::uint32_t rootKey, std::string_view keyName,
                                                            std::string_view valueName) const = 0;

protected:
    Registry() = default;
};

[[nodiscard]] std::unique_ptr<Registry> makeRegistry();

// A value as text: a string up to its first NUL, a double word as an unsigned decimal number, any other type as its
// bytes stand.
[[nodiscard]] std::string registryValueText(const RegistryValue& value);

} // namespace platform
