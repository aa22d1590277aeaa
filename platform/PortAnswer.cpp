#include "platform/PortAnswer.h"

#include <algorithm>
#include <cstddef>

namespace platform {

namespace {

constexpr std::string_view kPortMark = "COM";
constexpr unsigned char kFirstPrintable = ' ';

} // namespace

bool namesAPort(std::string_view answer)
{
    const std::size_t mark = answer.find(kPortMark);
    if (mark == std::string_view::npos) {
        return false;
    }
    const std::string_view rest = answer.substr(mark + kPortMark.size());
    return std::any_of(rest.begin(), rest.end(),
                       [](char c) { return static_cast<unsigned char>(c) < kFirstPrintable; });
}

} // namespace platform
