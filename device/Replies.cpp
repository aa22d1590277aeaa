#include "device/Replies.h"

#include "platform/SerialControl.h"
#include "text/HexText.h"

#include <cstddef>

namespace device::replies {

namespace {

constexpr std::size_t kDriverNameColumn = 13;
constexpr std::size_t kFirmwareColumn = 25;
constexpr std::size_t kPayloadColumn = 27;
constexpr std::size_t kReadStatusColumn = 22;

constexpr std::size_t kLongestWithoutPayload = 24; // a reply must be longer
constexpr std::size_t kShortestParameterLine = 28;
constexpr std::size_t kShortestReadReport = 23;

constexpr double kHighestStatus = 32767; // what the read status can hold

constexpr std::string_view kPort = "COM";
constexpr double kLowestPort = 1;
constexpr double kHighestPort = platform::SerialControl::kHighestPort;

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

std::string fromColumn(std::string_view text, std::size_t column)
{
    return column <= text.size() ? std::string(text.substr(column - 1)) : std::string();
}

std::string withoutLast(std::string text)
{
    if (!text.empty()) {
        text.pop_back();
    }
    return text;
}

std::optional<std::string> transactionPayload(std::string_view reply, std::string_view letters)
{
    if (!contains(reply, letters) || reply.size() <= kLongestWithoutPayload) {
        return std::nullopt;
    }
    return withoutLast(fromColumn(reply, kPayloadColumn));
}

int readReportStatus(std::string_view line)
{
    if (!line.starts_with("/read")) {
        return 0;
    }
    if (line.size() < kShortestReadReport) {
        return kUnknownReadStatus;
    }
    const double status = text::decimalNumber(fromColumn(line, kReadStatusColumn));
    return status >= 0 && status <= kHighestStatus ? static_cast<int>(status) : 0;
}

} // namespace

Line parseLine(std::string_view line)
{
    Line parsed;
    parsed.readStatus = readReportStatus(line);
    if (contains(line, " WC")) {
        parsed.kind = Line::Kind::Identification;
        parsed.hasText = line.size() > kLongestWithoutPayload;
        parsed.text = parsed.hasText ? fromColumn(line, kPayloadColumn) : std::string();
    } else if (contains(line, " WP") && line.size() >= kShortestParameterLine) {
        parsed.kind = Line::Kind::Parameter;
        parsed.hasText = true;
        parsed.text = fromColumn(line, kPayloadColumn);
    }
    return parsed;
}

std::optional<std::string> driverName(std::string_view reply)
{
    if (!contains(reply, "/ver")) {
        return std::nullopt;
    }
    return fromColumn(reply, kDriverNameColumn);
}

std::optional<std::string> firmwareVersion(std::string_view reply)
{
    if (!contains(reply, "dev_version") || reply.size() <= kLongestWithoutPayload) {
        return std::nullopt;
    }
    const std::string version = fromColumn(reply, kFirmwareColumn);
    return version.substr(0, version.find('/'));
}

std::optional<std::string> identification(std::string_view reply)
{
    return transactionPayload(reply, " WC");
}

std::optional<std::string> parameterValue(std::string_view reply)
{
    return transactionPayload(reply, " WP");
}

std::optional<std::string> portName(std::string_view answer)
{
    const std::size_t at = answer.find(kPort);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    std::string name(answer.substr(at));
    name = name.substr(0, name.find('\0'));
    if (static_cast<unsigned char>(name.back()) < ' ') {
        name.pop_back();
    }
    if (!portNumber(name)) {
        return std::nullopt;
    }
    return name;
}

std::optional<std::int16_t> portNumber(std::string_view portName)
{
    const std::size_t at = portName.find(kPort);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    const double number = text::decimalNumber(portName.substr(at + kPort.size()));
    if (number < kLowestPort || number > kHighestPort) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(number);
}

} // namespace device::replies
