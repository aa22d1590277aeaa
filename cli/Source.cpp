#include "cli/Source.h"

#include "cli/Updating.h"

namespace cli {

Source sourceOf(const std::string& word, const Arguments& arguments, Console& console)
{
    if (word == "reader") {
        return {.kind = Source::Kind::Reader, .file = std::nullopt};
    }
    if (word == "defaults") {
        return {.kind = Source::Kind::Defaults, .file = std::nullopt};
    }
    Arguments one = arguments;
    one.words = {word};
    return {.kind = Source::Kind::File, .file = readFiles(one, console).front()};
}

} // namespace cli
