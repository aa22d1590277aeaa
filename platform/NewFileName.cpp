#include "platform/NewFileName.h"

#include <charconv>
#include <system_error>

namespace platform {

namespace {

constexpr std::string_view kStart = ".teslin-";

// Takes a number off the front of a text, or fails.
std::optional<unsigned long> takeNumber(std::string_view& text)
{
    unsigned long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end == text.data()) {
        return {};
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

} // namespace

std::string newFileName(unsigned long process, int number)
{
    return std::string(kStart) + std::to_string(process) + '-' + std::to_string(number);
}

std::optional<unsigned long> writerOf(std::string_view name)
{
    if (!name.starts_with(kStart)) {
        return {};
    }
    std::string_view rest = name.substr(kStart.size());
    const std::optional<unsigned long> process = takeNumber(rest);
    if (!process || !rest.starts_with('-')) {
        return {};
    }
    rest.remove_prefix(1);
    return takeNumber(rest) && rest.empty() ? process : std::nullopt;
}

} // namespace platform
