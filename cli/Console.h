#pragma once

#include "cli/Arguments.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

using Json = nlohmann::ordered_json;

// Where a command's words go. Answers go to standard output, everything else to standard error; with --json the only
// answer is one JSON document. All text is UTF-8.
class Console final
{
public:
    explicit Console(const Arguments& arguments);

    [[nodiscard]] bool isJson() const { return m_json; }
    [[nodiscard]] bool answersTerminal() const { return m_answersTerminal; }

    // What the user asked for; nothing under --json.
    void print(std::string_view line) const;
    // The same, byte for byte and without a line end.
    void printBytes(std::string_view bytes) const;
    // What the user should know besides; not when --quiet.
    void note(std::string_view line);
    // What only --verbose tells.
    void detail(std::string_view line);
    // Always: what is wrong.
    void complain(std::string_view line);
    // Puts a question; always, and without a line end.
    void prompt(std::string_view text);

    // How far a longer work has come. The bar goes as soon as anything else is said, and at its end.
    void progress(std::string_view what, std::size_t done, std::size_t total);
    void endProgress();

    // For differences: the text of the left or the right side, coloured where colours are wanted.
    [[nodiscard]] std::string left(std::string_view text) const;
    [[nodiscard]] std::string right(std::string_view text) const;

    // The one JSON document of this run; nothing without --json.
    void answer(const Json& document) const;

    // True when all that was printed has gone out.
    [[nodiscard]] static bool flush();

private:
    bool m_json;
    bool m_quiet;
    bool m_verbose;
    bool m_bar;
    bool m_color;
    bool m_answersTerminal;
    bool m_barIsShown = false;
    std::string m_barText;
};

} // namespace cli
