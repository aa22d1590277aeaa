#pragma once

#include "simulator/Verdict.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

// The parameters inside a reader: 001, 013 to 02D without 02B, and 080 to 114, one byte each. An address is three
// upper-case hexadecimal digits, a value two. Starts with the factory defaults, set to
// the US keyboard layout.
class ParameterMemory final
{
public:
    ParameterMemory();

    // The value at an address; nothing when the reader has no such parameter.
    [[nodiscard]] std::optional<std::string> value(std::string_view address) const;

    // Stores a value of two hexadecimal digits (either case, kept in upper case). False, and nothing stored, when the
    // reader has no such parameter or the value is anything else.
    [[nodiscard]] bool store(std::string_view address, std::string_view value);

    // Takes values from text: one "aaa=vv" a line, in hexadecimal of either case; blanks around the parts, empty lines
    // and everything from a # on are skipped. Parameters that are not named keep their values. A line that cannot be
    // taken, an address that the reader does not have and an address given twice are refused with the line's number;
    // then no value has changed.
    Verdict load(std::string_view text);

    // How often values were stored or loaded so far.
    [[nodiscard]] int changes() const { return m_changes; }

    // All values as load() reads them, in the order of their addresses.
    [[nodiscard]] std::string text() const;

private:
    std::map<std::string, std::string, std::less<>> m_values;
    int m_changes = 0;
};

} // namespace simulator
