#include "cli/LocalTime.h"

#include <array>
#include <cstddef>
#include <ctime>

namespace cli {

namespace {

std::tm now()
{
    const std::time_t seconds = std::time(nullptr);
    return *std::localtime(&seconds); // NOLINT(concurrency-mt-unsafe): there is one thread
}

std::string formatted(const char* form)
{
    const std::tm local = now();
    std::array<char, 64> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), form, &local);
    return {text.data(), length};
}

} // namespace

std::chrono::year_month_day today()
{
    const std::tm local = now();
    return std::chrono::year(local.tm_year + 1900) / std::chrono::month(static_cast<unsigned>(local.tm_mon + 1)) /
           std::chrono::day(static_cast<unsigned>(local.tm_mday));
}

std::string timeStamp()
{
    return formatted("%Y%m%d-%H%M%S");
}

std::string logTimeStamp()
{
    return formatted("%Y-%m-%d %H:%M:%S");
}

} // namespace cli
