#pragma once

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/Reader.h"
#include "cli/TableFiles.h"

#include <optional>
#include <string>

namespace cli {

// Where values come from: a file, "reader" or "defaults". A file of one of these names is given as "./reader".
struct Source
{
    enum class Kind { File, Reader, Defaults };
    Kind kind = Kind::File;
    std::optional<NamedTable> file;
};

// Reads the file, if it is one; throws Failure.
[[nodiscard]] Source sourceOf(const std::string& word, const Arguments& arguments, Console& console);

} // namespace cli
