#include "cli/Console.h"

#include "platform/TerminalKeys.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <cstdlib>

namespace cli {

namespace {

using platform::Stream;

bool holds(When when, bool automatic)
{
    return when == When::Always || (when == When::Auto && automatic);
}

bool wantsNoColor()
{
    const char* const noColor = std::getenv("NO_COLOR");
    return noColor != nullptr && *noColor != '\0';
}

void put(std::FILE* stream, std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stream);
}

void putLine(std::FILE* stream, std::string_view line)
{
    put(stream, line);
    put(stream, "\n");
}

std::string barText(std::string_view what, std::size_t done, std::size_t total)
{
    constexpr std::size_t kWidth = 30;
    const std::size_t filled = total == 0 ? kWidth : done * kWidth / total;
    return "\r" + std::string(what) + " [" + std::string(filled, '#') + std::string(kWidth - filled, '.') + "] " +
           std::to_string(done) + "/" + std::to_string(total);
}

} // namespace

Console::Console(const Arguments& arguments)
    : m_json(arguments.json)
    , m_quiet(arguments.quiet)
    , m_verbose(arguments.verbose)
    , m_bar(holds(arguments.progress, platform::isTerminal(Stream::Errors) && !arguments.quiet))
    , m_color(holds(arguments.color, platform::isTerminal(Stream::Output) && !wantsNoColor()))
    , m_answersTerminal(platform::isTerminal(Stream::Output))
{}

void Console::print(std::string_view line) const
{
    if (!m_json) {
        putLine(stdout, line);
    }
}

void Console::printBytes(std::string_view bytes) const
{
    if (!m_json) {
        put(stdout, bytes);
    }
}

void Console::note(std::string_view line)
{
    if (!m_quiet) {
        complain(line);
    }
}

void Console::detail(std::string_view line)
{
    if (m_verbose) {
        complain(line);
    }
}

void Console::complain(std::string_view line)
{
    endProgress();
    std::fflush(stdout);
    putLine(stderr, line);
}

void Console::prompt(std::string_view text)
{
    endProgress();
    std::fflush(stdout);
    put(stderr, text);
    std::fflush(stderr);
}

void Console::progress(std::string_view what, std::size_t done, std::size_t total)
{
    if (!m_bar) {
        return;
    }
    // A terminal that is slow must not slow the reader down for nothing.
    std::string text = barText(what, done, total);
    if (text != m_barText) {
        put(stderr, text);
        std::fflush(stderr);
        m_barText = std::move(text);
    }
    m_barIsShown = true;
}

void Console::endProgress()
{
    if (m_barIsShown) {
        put(stderr, "\r" + std::string(m_barText.size(), ' ') + "\r");
        std::fflush(stderr);
    }
    m_barIsShown = false;
    m_barText.clear();
}

std::string Console::left(std::string_view text) const
{
    return m_color ? "\033[31m" + std::string(text) + "\033[0m" : std::string(text);
}

std::string Console::right(std::string_view text) const
{
    return m_color ? "\033[32m" + std::string(text) + "\033[0m" : std::string(text);
}

void Console::answer(const Json& document) const
{
    if (m_json) {
        putLine(stdout, document.dump(2, ' ', false, Json::error_handler_t::replace));
    }
}

bool Console::flush()
{
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

} // namespace cli
