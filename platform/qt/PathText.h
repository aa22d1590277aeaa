#pragma once

#include <QString>

#include <filesystem>

// File names between Qt and the standard library, as the system's own bytes.
namespace platform {

[[nodiscard]] QString pathText(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path toPath(const QString& name);

} // namespace platform
