#pragma once

#include "cli/Arguments.h"
#include "cli/Console.h"
#include "cli/Reader.h"
#include "cli/TableFiles.h"
#include "cli/Writing.h"

#include <filesystem>
#include <vector>

// Bringing a reader to what files say.
namespace cli {

// Reads the files that were given, or throws Failure. Tells what a lenient reading has left out.
[[nodiscard]] std::vector<NamedTable> readFiles(const Arguments& arguments, Console& console);

// What files want of a reader.
struct Wanted
{
    Values values;                                                    // of parameters that can be written
    Tables tables{.configuration = false, .keyboardLanguage = false}; // that they belong to
};

// All files together. Throws Failure when two of them want different things.
[[nodiscard]] Wanted wantedOf(const std::vector<NamedTable>& files);

struct Update
{
    Values before; // all parameters of the tables
    std::vector<std::filesystem::path> backups;
    Writing writing;
    std::size_t alreadyRight = 0;
};

// Reads the reader, keeps what it holds in backup files, writes what differs (or, if asked for, all) and proves it.
// With a dry run nothing is written, and the writing lists what would be. Throws Failure or LinkError as long as
// nothing has been written; later the writing tells.
[[nodiscard]] Update updateReader(Reader& reader, const Wanted& wanted, const Arguments& arguments, Console& console);

// The command line that puts backup files back.
[[nodiscard]] std::string restoringCommand(const Update& update, const Arguments& arguments);

} // namespace cli
