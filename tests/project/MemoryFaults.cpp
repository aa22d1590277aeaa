// Faults that the checks of memory must find: run by tests that fail unless they do.

#include <cstdio>
#include <cstring>
#include <vector>

int main(int argc, char* argv[])
{
    const char* const which = argc == 2 ? argv[1] : "";
    if (std::strcmp(which, "leak") == 0) {
        volatile char* lost = new char[77];
        lost[0] = 1;
        lost = nullptr;
    } else if (std::strcmp(which, "iterator") == 0) {
        std::vector<int> numbers{1, 2, 3};
        const auto first = numbers.begin();
        numbers.assign(100, 4);
        return *first == 4 ? 0 : 1;
    } else {
        std::puts("leak or iterator");
        return 2;
    }
    return 0;
}
