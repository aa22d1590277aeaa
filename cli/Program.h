#pragma once

namespace cli {

// Runs teslin with these arguments, the program's name first; what main() returns.
[[nodiscard]] int runProgram(int argc, const char* const* argv);

} // namespace cli
