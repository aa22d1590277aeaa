#pragma once

#include "platform/MessageBoxes.h"

#include <string>

namespace tables {

// Asks whether a row should be sent to the reader; true only on Yes.
[[nodiscard]] bool confirmSend(platform::MessageBoxes& boxes, std::string question);

} // namespace tables
