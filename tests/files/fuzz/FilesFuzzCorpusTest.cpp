#include "tests/files/fuzz/Properties.h"

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string contents(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Each seed whole and cut off behind every byte, so that every line is also met unfinished.
std::size_t checkSeed(void (*check)(std::string_view), const std::string& seed)
{
    for (std::size_t length = 0; length <= seed.size(); ++length) {
        check(std::string_view(seed).substr(0, length));
    }
    return seed.size() + 1;
}

} // namespace

// Runs the fuzz targets' checks over the seeds below the folder given as the only argument: every seed through every
// check, the same on every run. Needs no fuzzer, so it is part of the ordinary tests.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: FilesFuzzCorpusTest CORPUS\n");
        return 2;
    }
    std::size_t inputs = 0;
    for (const char* folder : {"configuration", "keyboard", "layouts"}) {
        std::size_t seeds = 0;
        for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(argv[1]) / folder)) {
            const std::string seed = contents(entry.path());
            inputs += checkSeed(fuzz::checkConfigurationFile, seed);
            inputs += checkSeed(fuzz::checkKeyboardLanguageFile, seed);
            inputs += checkSeed(fuzz::checkLayoutList, seed);
            ++seeds;
        }
        if (seeds == 0) {
            std::fprintf(stderr, "no seeds in %s\n", folder);
            return 1;
        }
    }
    std::printf("%zu inputs checked\n", inputs);
    return 0;
}
