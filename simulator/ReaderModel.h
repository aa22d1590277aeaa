#pragma once

#include "simulator/ParameterMemory.h"

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

// The reader with its driver, as it is seen through the virtual COM port: one command line in, at most one reply out.
class ReaderModel final
{
public:
    // Both without their line end. Nothing is answered to a parameter address that the reader does not have, to a
    // value that is not two hexadecimal digits, and to a command that it does not know. A write takes effect at once.
    [[nodiscard]] std::optional<std::string> answerTo(std::string_view command);

    [[nodiscard]] ParameterMemory& memory() { return m_memory; }
    [[nodiscard]] const ParameterMemory& memory() const { return m_memory; }

private:
    [[nodiscard]] std::optional<std::string> answerToRead(std::string_view command, std::string_view address) const;
    [[nodiscard]] std::optional<std::string> answerToWrite(std::string_view command, std::string_view setting);

    ParameterMemory m_memory;
};

} // namespace simulator
