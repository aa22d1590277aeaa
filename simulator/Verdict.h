#pragma once

#include <string>

namespace simulator {

// What became of a text that a user wrote: taken, or refused with the reason in words. A refused text changed nothing.
struct [[nodiscard]] Verdict
{
    std::string error; // empty when taken

    explicit operator bool() const { return error.empty(); }
};

} // namespace simulator
