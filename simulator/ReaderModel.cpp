#include "simulator/ReaderModel.h"

#include <array>
#include <cstddef>

namespace simulator {

namespace {

struct FixedReply
{
    std::string_view command;
    std::string_view reply;
};

// A command for a raw device byte spells it with four characters, \xHH; the driver turns it into the byte. The echo
// gives it back as it was spelt.
constexpr std::array<FixedReply, 6> kFixedReplies = {{
    {"/ver", "/ver reply: Teslin KSD 2.10"},
    {"/get dev_version", "/get dev_version reply: 3.07/Teslin"},
    {"/rawxact WCY", "/rawxact WCY reply 00 ok: Teslin 60044718"},
    {R"(/rawsend \xA5)", R"(/rawsend \xA5 ok)"},
    {R"(/rawsend \xA2)", R"(/rawsend \xA2 ok)"},
    {R"(/rawsend \xA8\x40)", R"(/rawsend \xA8\x40 ok)"},
}};

constexpr std::string_view kRead = "/rawxact WPV";
constexpr std::string_view kWrite = "/rawsend WPW";

} // namespace

std::optional<std::string> ReaderModel::answerTo(std::string_view command)
{
    for (const FixedReply& fixed : kFixedReplies) {
        if (command == fixed.command) {
            return std::string(fixed.reply);
        }
    }
    if (command.starts_with(kRead)) {
        return answerToRead(command, command.substr(kRead.size()));
    }
    if (command.starts_with(kWrite)) {
        return answerToWrite(command, command.substr(kWrite.size()));
    }
    return std::nullopt;
}

std::optional<std::string> ReaderModel::answerToRead(std::string_view command, std::string_view address) const
{
    const std::optional<std::string> value = m_memory.value(address);
    if (!value) {
        return std::nullopt;
    }
    return std::string(command) + " reply 00: " + *value;
}

std::optional<std::string> ReaderModel::answerToWrite(std::string_view command, std::string_view setting)
{
    const std::size_t equals = setting.find('=');
    if (equals == std::string_view::npos || !m_memory.store(setting.substr(0, equals), setting.substr(equals + 1))) {
        return std::nullopt;
    }
    return std::string(command) + " ok";
}

} // namespace simulator
