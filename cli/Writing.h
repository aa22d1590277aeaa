#pragma once

#include "cli/Console.h"
#include "cli/Failure.h"
#include "cli/Parameters.h"
#include "cli/Reader.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <vector>

// Writing to the reader, with proof.
namespace cli {

// What has become of one parameter that was to be written.
struct Written
{
    enum class State {
        Proven,     // written, and read back as wanted
        Wrong,      // written, and read back as something else
        Unknown,    // sent, but not read back: the reader may hold either value
        NotWritten, // not sent
    };

    std::string address;
    std::uint8_t wanted = 0;
    std::optional<std::uint8_t> before; // where it had been read
    std::optional<std::uint8_t> found;  // where it was read back
    State state = State::NotWritten;
};

struct Writing
{
    std::vector<Written> parameters; // in the order of their addresses
    std::exception_ptr cause;        // why it ended early; null when it did not

    [[nodiscard]] bool isProven() const;
};

// Writes the values in the order of their addresses, reading each back before the next is written. A wrong value does
// not end it, a reader that does not answer does. Never throws LinkError.
[[nodiscard]] Writing writeWithProof(Reader& reader, const Values& wanted, const Values& before, Console& console);

// How a writing ends: 0 when all is proven, otherwise by its cause, or 1.
[[nodiscard]] Exit exitOf(const Writing& writing);

// Tells what was not proven, a line a parameter, and the cause.
void tellFailures(const Writing& writing, Console& console);

[[nodiscard]] Json jsonOf(const Writing& writing);

// The cause as a member "error" of a document.
void addCause(const std::exception_ptr& cause, Json& document);

} // namespace cli
