// Asks Windows itself about what the program has done, and does what another program would:
//
//     get FILE SECTION KEY          prints what the system reads there
//     set FILE SECTION KEY VALUE    lets the system write
//     topmost TITLE                 prints "yes" or "no": whether the window with this title is above all others
//
// Ends with 1 when the system refuses, with 2 when it was not understood.

#include "platform/windows/Windows.h"

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace {

int get(const std::string& file, const std::string& section, const std::string& key)
{
    std::array<char, 4096> value{};
    const DWORD length = ::GetPrivateProfileStringA(section.c_str(), key.c_str(), "", value.data(),
                                                    static_cast<DWORD>(value.size()), file.c_str());
    std::fwrite(value.data(), 1, length, stdout);
    return 0;
}

int set(const std::string& file, const std::string& section, const std::string& key, const std::string& value)
{
    return ::WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), file.c_str()) != 0 ? 0 : 1;
}

int topmost(const std::string& title)
{
    HWND const window = ::FindWindowA(nullptr, title.c_str());
    if (window == nullptr) {
        return 1;
    }
    std::fputs((::GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0 ? "yes" : "no", stdout);
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    const std::string command = words.empty() ? std::string() : words.front();
    if (command == "get" && words.size() == 4) {
        return get(words[1], words[2], words[3]);
    }
    if (command == "set" && words.size() == 5) {
        return set(words[1], words[2], words[3], words[4]);
    }
    if (command == "topmost" && words.size() == 2) {
        return topmost(words[1]);
    }
    return 2;
}
