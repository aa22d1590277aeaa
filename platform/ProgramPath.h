#pragma once

#include <filesystem>

namespace platform {

// The executable that runs, links followed; empty when the system does not tell.
[[nodiscard]] std::filesystem::path programPath();

} // namespace platform
