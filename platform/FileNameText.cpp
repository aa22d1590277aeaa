#include "platform/FileNameText.h"

#include "text/AnsiText.h"
#include "text/Utf8.h"

#include <string_view>

namespace platform {

namespace {

constexpr char32_t kNoText = U'\uFFFD';
constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kFirstLowSurrogate = 0xDC00;
constexpr char32_t kLastSurrogate = 0xDFFF;

[[maybe_unused]] std::string textOf(std::string_view name)
{
    return text::fromUtf8(name);
}

// UTF-16. Half of a pair may stand alone in a name.
[[maybe_unused]] std::string textOf(std::wstring_view name)
{
    std::string ansi;
    while (!name.empty()) {
        const auto unit = static_cast<char32_t>(name.front());
        const char32_t next = name.size() > 1 ? static_cast<char32_t>(name[1]) : 0;
        const bool isHigh = unit >= kFirstSurrogate && unit < kFirstLowSurrogate;
        const bool isPair = isHigh && next >= kFirstLowSurrogate && next <= kLastSurrogate;
        const bool isHalf = !isPair && unit >= kFirstSurrogate && unit <= kLastSurrogate;
        // The code page has no character that takes a pair.
        ansi += static_cast<char>(text::unicodeToAnsi(isPair || isHalf ? kNoText : unit));
        name.remove_prefix(isPair ? 2 : 1);
    }
    return ansi;
}

} // namespace

// The system's own text: its conversions throw for a name that is none.
std::string fileNameText(const std::filesystem::path& name)
{
    return textOf(std::basic_string_view<std::filesystem::path::value_type>(name.native()));
}

} // namespace platform
