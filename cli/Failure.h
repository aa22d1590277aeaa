#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace cli {

// How a command ends, for scripts.
enum class Exit : int {
    Done = 0,      // and proven
    Different = 1, // differences, or a proof that failed
    Usage = 2,
    NoPort = 3, // no driver or no port, or it is somebody else's
    NoReply = 4,
    File = 5,
    Interrupted = 130,
};

// Ends a command. what() is one sentence for the user.
class Failure final : public std::runtime_error
{
public:
    Failure(Exit exit, const std::string& sentence, std::string remedy = {})
        : std::runtime_error(sentence)
        , m_exit(exit)
        , m_remedy(std::move(remedy))
    {}

    [[nodiscard]] Exit exit() const { return m_exit; }
    [[nodiscard]] const std::string& remedy() const { return m_remedy; }

private:
    Exit m_exit;
    std::string m_remedy;
};

} // namespace cli
