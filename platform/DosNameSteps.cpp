#include "platform/DosNameSteps.h"

#include <algorithm>

namespace platform {

namespace {

using Steps = std::vector<std::string>;

constexpr std::string_view kPortPrefix = "com";
constexpr char kSeparator = '\\';

constexpr bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isDrivePath(std::string_view name)
{
    return name.size() > 2 && isLetter(name[0]) && name[1] == ':' && name[2] == kSeparator;
}

Steps split(std::string_view text)
{
    Steps steps;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(kSeparator, start), text.size());
        steps.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return steps;
}

} // namespace

bool isPortName(std::string_view dosName)
{
    return dosName.size() > kPortPrefix.size() && withLowerCase(dosName.substr(0, kPortPrefix.size())) == kPortPrefix &&
           std::all_of(dosName.begin() + kPortPrefix.size(), dosName.end(), isDigit);
}

Steps dosNameSteps(std::string_view dosName)
{
    using namespace std::string_view_literals;
    if (dosName.find_first_of("/\0"sv) != std::string_view::npos || dosName.find("..") != std::string_view::npos) {
        return {};
    }
    Steps steps;
    if (dosName.substr(0, kDevicePrefix.size()) == kDevicePrefix) {
        steps = split(dosName.substr(kDevicePrefix.size()));
        if (steps.size() > 1) {
            return {};
        }
    } else if (isPortName(dosName)) {
        steps = {std::string(dosName)};
    } else if (isDrivePath(dosName)) {
        steps = split(dosName);
    }
    const bool hasNoName =
        std::any_of(steps.begin(), steps.end(), [](const std::string& step) { return step.empty() || step == "."; });
    return hasNoName ? Steps{} : steps;
}

std::string withLowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

} // namespace platform
