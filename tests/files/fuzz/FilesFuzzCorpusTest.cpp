#include "tests/files/fuzz/Properties.h"

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace {

std::string contents(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

using Check = void (*)(std::string_view);

struct Corpus
{
    const char* folder;
    Check check;
};

constexpr Corpus kCorpora[] = {{"configuration", fuzz::checkConfigurationFile},
                               {"keyboard", fuzz::checkKeyboardLanguageFile},
                               {"layouts", fuzz::checkLayoutList}};

// Every seed through every check, and through its own also cut off behind every byte, so that each line is met
// unfinished too. Returns the number of seeds.
std::size_t checkSeeds(const std::filesystem::path& folder, Check own)
{
    std::size_t seeds = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string seed = contents(entry.path());
        for (const Corpus& corpus : kCorpora) {
            corpus.check(seed);
        }
        for (std::size_t length = 0; length < seed.size(); ++length) {
            own(std::string_view(seed).substr(0, length));
        }
        ++seeds;
    }
    return seeds;
}

} // namespace

// Runs the fuzz targets' checks over the seeds below the folder given as the only argument, the same on every run.
// Needs no fuzzer, so it is part of the ordinary tests.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: FilesFuzzCorpusTest CORPUS\n");
        return 2;
    }
    for (const Corpus& corpus : kCorpora) {
        const std::size_t seeds = checkSeeds(std::filesystem::path(argv[1]) / corpus.folder, corpus.check);
        std::printf("%s: %zu seeds\n", corpus.folder, seeds);
        if (seeds == 0) {
            return 1;
        }
    }
    return 0;
}
