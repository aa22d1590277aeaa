#include "cli/Reader.h"

#include "device/Commands.h"
#include "device/Replies.h"
#include "text/HexText.h"

#include <functional>
#include <string_view>

namespace cli {

namespace {

using device::LinkError;

device::DirectLink::Setup setupOf(const Arguments& arguments, std::function<bool()> isInterrupted)
{
    return {.names = arguments.dosDevices.empty() ? platform::DosNames() : platform::DosNames(arguments.dosDevices),
            .driverName = arguments.driverName,
            .port = arguments.port,
            .timeout = std::chrono::milliseconds(arguments.timeoutMilliseconds),
            .isInterrupted = std::move(isInterrupted)};
}

using Meaning = std::function<std::optional<std::string>(std::string_view line)>;

// Nothing when no reply came that has this meaning.
std::optional<std::string> askFor(device::DirectLink& link, std::string_view command, const Meaning& meaning)
{
    try {
        return meaning(link.ask(command, [&](std::string_view line) { return meaning(line).has_value(); }));
    } catch (const LinkError& error) {
        if (error.kind() != LinkError::Kind::NoReply) {
            throw;
        }
        return std::nullopt;
    }
}

std::optional<std::string> notEmpty(std::optional<std::string> text)
{
    return text && !text->empty() ? text : std::nullopt;
}

std::optional<std::string> driverOf(std::string_view line)
{
    return notEmpty(device::replies::driverName(line));
}

std::optional<std::string> firmwareOf(std::string_view line)
{
    return notEmpty(device::replies::firmwareVersion(line));
}

std::optional<std::string> deviceOf(std::string_view line)
{
    return notEmpty(device::replies::identification(std::string(line) + device::commands::kLineEnd));
}

std::optional<std::string> layoutOf(device::DirectLink& link)
{
    try {
        const std::uint8_t first = link.readParameter("081");
        return text::hexTwoDigits(first) + text::hexTwoDigits(link.readParameter("082"));
    } catch (const LinkError& error) {
        if (error.kind() != LinkError::Kind::NoReply) {
            throw;
        }
        return std::nullopt;
    }
}

} // namespace

Reader::Reader(const Arguments& arguments, Console& console, std::function<bool()> isInterrupted)
    : m_console(console)
    , m_link(setupOf(arguments, std::move(isInterrupted)))
{}

void Reader::open()
{
    m_link.open();
    m_console.detail("Opened COM" + std::to_string(m_link.port()));
}

Values Reader::read(const std::vector<std::string>& addresses)
{
    Values values;
    std::size_t done = 0;
    for (const std::string& address : addresses) {
        m_console.progress("Reading", done++, addresses.size());
        values[address] = m_link.readParameter(address);
    }
    m_console.endProgress();
    m_console.detail("Read " + std::to_string(values.size()) + " parameters");
    return values;
}

Values Reader::read(Tables tables)
{
    std::vector<std::string> addresses;
    for (const Parameter& parameter : parameters()) {
        if (tables.holds(parameter.table)) {
            addresses.push_back(parameter.address);
        }
    }
    return read(addresses);
}

std::string Reader::firmwareVersion()
{
    // The report shows what the window keeps, which is the line with its end when nothing follows the number.
    return askFor(m_link, device::commands::kDeviceVersion,
                  [](std::string_view line) {
                      return device::replies::firmwareVersion(std::string(line) + device::commands::kLineEnd);
                  })
        .value_or("");
}

Identification identify(device::DirectLink& link)
{
    Identification found;
    found.driver = askFor(link, device::commands::kDriverVersion, driverOf);
    found.firmware = askFor(link, device::commands::kDeviceVersion, firmwareOf);
    found.device = askFor(link, device::commands::kIdentify, deviceOf);
    found.layoutId = layoutOf(link);
    return found;
}

} // namespace cli
