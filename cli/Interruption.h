#pragma once

namespace cli {

// From now on the signals that ask a program to end only set a mark, so that the command can say what it has done and
// what not. Writing to a reader of our output that has gone does not end the program either.
void watchForInterruption();

[[nodiscard]] bool isInterrupted();

} // namespace cli
