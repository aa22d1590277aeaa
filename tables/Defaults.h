#pragma once

#include <span>
#include <string_view>

// The factory defaults of both tables, as the reader is delivered.
namespace tables {

struct DefaultRow
{
    std::string_view address; // "013", or a pair "083-084"
    std::string_view value;   // "95", or a pair "20-03": shift flags, then scan code
    std::string_view notes;   // what the row is, in words
};

// 27 rows in address order: 001 and 013 to 02D, without 02B.
[[nodiscard]] std::span<const DefaultRow> defaultRows_CFG();

// 75 rows in address order: 080, the identification pair 081-082 and 73 pairs up to 113-114.
[[nodiscard]] std::span<const DefaultRow> defaultRows_KB();

} // namespace tables
