#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Profile strings: the text format of settings files, read and written with the rules of the Windows profile calls on
// every system. A file is sections of lines "key=value", each section under a line "[section]"; everything else in it
// belongs to others and is kept byte for byte. Text is Windows-1252; lines end in CR LF, LF or CR.
//
// The names of sections and keys are compared without regard to the case of the letters A to Z, and to blanks and tabs
// around them in the file. The first section of a name and the first key in it count; a second section of the same name
// is never looked at.
namespace platform {

// Kept behaviour kb-driver-name:
// Values are read through a buffer of this size, its last byte kept for a terminator.
constexpr std::size_t kProfileBufferSize = 40;

// The value of a key, without the blanks and tabs around it and without one pair of double or single quotes around the
// rest; of a longer value the first bufferSize - 1 bytes. Empty when there is no such section or key.
[[nodiscard]] std::string profileString(std::string_view bytes, std::string_view section, std::string_view key,
                                        std::size_t bufferSize = kProfileBufferSize);

// The file's new bytes after a key has been given a value: replaced where it stands, else added as the last line of its
// section, else added with its section at the end of the file. New lines end in CR LF. The value is written up to its
// first control character, since the rest could not be read back and a line end in it would begin a line of its own.
[[nodiscard]] std::string withProfileString(std::string_view bytes, std::string_view section, std::string_view key,
                                            std::string_view value);

} // namespace platform
