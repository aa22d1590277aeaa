#pragma once

#include "tests/device/ParameterReply.h"
#include "tests/support/ScriptedSerial.h"

#include <QByteArrayList>

#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

// A reader and its driver as a script, and what they are expected to be asked. Addresses and values are made here, by
// counting, and not with the program's own routines.
namespace reader {

[[nodiscard]] inline std::string address(int number)
{
    char text[16] = {};
    std::snprintf(text, sizeof text, "%03X", static_cast<unsigned>(number));
    return text;
}

// The value that the reader holds at an address: a byte that no default and no neighbour has.
[[nodiscard]] inline std::string valueAt(int number)
{
    char text[16] = {};
    std::snprintf(text, sizeof text, "%02X", static_cast<unsigned>(number * 37 + 11) & 0xFFU);
    return text;
}

// 001 and 013 to 02D, without 02B.
[[nodiscard]] inline std::vector<int> configurationAddresses()
{
    std::vector<int> addresses = {0x001};
    for (int number = 0x013; number <= 0x02D; ++number) {
        if (number != 0x02B) {
            addresses.push_back(number);
        }
    }
    return addresses;
}

// The identification of driver and device, at the beginning of every operation.
inline const QByteArrayList kIdentification = {"/ver", "/get dev_version", "/rawxact WCY", "/rawxact WPV081",
                                               "/rawxact WPV082"};
constexpr int kTicksOfIdentification = 15;

[[nodiscard]] inline QByteArray asking(int number)
{
    return "/rawxact WPV" + QByteArray::fromStdString(address(number));
}

[[nodiscard]] inline QByteArray writing(int number, const std::string& value)
{
    return "/rawsend WPW" + QByteArray::fromStdString(address(number) + "=" + value);
}

// Answers every command at once, except for what the test changes.
class Script final
{
public:
    std::set<std::string> silent;                                 // commands without an answer
    std::map<std::string, std::vector<testsupport::Reply>> other; // commands with another answer

    std::vector<testsupport::Reply> operator()(const std::string& command) const
    {
        if (silent.contains(command)) {
            return {};
        }
        if (const auto found = other.find(command); found != other.end()) {
            return found->second;
        }
        if (command == "/ver") {
            return {{"/ver reply: Teslin KSD 2.10\n"}};
        }
        if (command == "/get dev_version") {
            return {{"/get dev_version reply: 3.07/Teslin\n"}};
        }
        if (command == "/rawxact WCY") {
            return {{"/rawxact WCY reply 00 ok: Teslin 60044718\n"}};
        }
        if (command.starts_with("/rawxact WPV")) {
            const std::string asked = command.substr(12);
            return {{testsupport::parameterReply(asked, valueAt(std::stoi(asked, nullptr, 16)))}};
        }
        return {{command + " ok\n"}}; // the echo of a write
    }
};

} // namespace reader
