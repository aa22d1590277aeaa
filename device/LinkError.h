#pragma once

#include <stdexcept>
#include <string>

namespace device {

// Why the direct link cannot go on. what() is one sentence for the user.
class LinkError final : public std::runtime_error
{
public:
    enum class Kind {
        NoDriver,    // its device object is not there, may not be used, or names no port
        NoPort,      // the port is not there or may not be used
        PortInUse,   // another program has it
        PortLost,    // it went away in the middle
        NoReply,     // a question was asked three times, and nothing that can be believed came back
        Interrupted, // the user has had enough
    };

    LinkError(Kind kind, const std::string& sentence, std::string remedy = {})
        : std::runtime_error(sentence)
        , m_kind(kind)
        , m_remedy(std::move(remedy))
    {}

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] const std::string& remedy() const { return m_remedy; } // what to do about it, may be empty

private:
    Kind m_kind;
    std::string m_remedy;
};

} // namespace device
