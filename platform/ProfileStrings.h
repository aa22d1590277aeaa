#pragma once
#include <filesystem>
#include <string>
#include <string_view>
namespace platform {
class ProfileStrings { public: explicit ProfileStrings(std::filesystem::path) {} std::string get(std::string_view, std::string_view) const { return {}; } bool set(std::string_view, std::string_view, std::string_view) { return true; } };
inline std::filesystem::path settingsFilePath(const std::filesystem::path& p, const std::filesystem::path&) { return p; }
}
