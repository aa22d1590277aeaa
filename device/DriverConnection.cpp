#include "device/DriverConnection.h"

#include "device/Commands.h"
#include "device/Replies.h"

#include <array>
#include <optional>

namespace device {

namespace {

constexpr std::size_t kPortNameBuffer = 2000; // bytes the driver's answer may have

std::string padded(std::string_view text)
{
    return " " + std::string(text) + " ";
}

} // namespace

DriverConnection::DriverConnection(LinkState& link, CommandProtocol& protocol, const LinkServices& services,
                                   const LinkSurfaces& surfaces, VirtualPort& virtualPort)
    : m_link(link)
    , m_protocol(protocol)
    , m_port(services.MSComm1)
    , m_driver(services.driver)
    , m_events(services.events)
    , m_display(surfaces.display)
    , m_status(surfaces.status)
    , m_buttons(surfaces.buttons)
    , m_virtualPort(virtualPort)
    , m_boxes(services.boxes)
{
    m_driver.setWhileWaiting([this] { m_events.processWithoutInput(); });
}

DriverConnection::~DriverConnection()
{
    m_driver.setWhileWaiting({});
}

bool DriverConnection::Detect()
{
    ClearSettings();
    m_display.setIdentification(Identification::Driver, "Getting virtual com port number...");
    CloseTheDeviceDriver();
    m_protocol.ShowActiveSend();
    m_events.processWithoutInput(); // opening may take a while, and nobody is asked meanwhile
    const platform::Result<void> opened = m_driver.open(R"(\\.\)" + m_link.DriverFriendlyName);
    m_protocol.ShowInactiveSend();
    if (!opened) {
        m_display.setIdentification(Identification::Driver, "Unable to get virtual com port number.");
        return false;
    }
    m_protocol.ShowActiveSend();
    m_protocol.ShowActiveRecv();
    const platform::Result<std::string> answer = askForPortName();
    m_driver.close();
    m_protocol.ShowInactiveSend();
    m_protocol.ShowInactiveRecv();
    m_events.processPending(); // before a box comes, which would swallow a wish to close the window
    if (!answer) {
        m_display.setIdentification(Identification::Driver, "Unable to get virtual com port number..");
        return false;
    }
    const std::optional<std::string> name = replies::portName(answer.value());
    if (name) {
        m_virtualPort.setPortText(*name);
    }
    checkPortText();
    return name.has_value();
}

platform::Result<std::string> DriverConnection::askForPortName()
{
    if (const auto written = m_driver.write(std::string(commands::kGetPortName) + commands::kLineEnd); !written) {
        return written.error();
    }
    return m_driver.read(kPortNameBuffer);
}

// Kept behaviour kb-portless-answer:
// The port's name in the options is looked at even when the driver named none: it may have been typed there.
void DriverConnection::checkPortText()
{
    const std::string text = m_virtualPort.portText();
    const std::optional<std::int16_t> number = replies::portNumber(text);
    if (!number) {
        m_boxes.show({.text = "Could not open Teslin port!", .title = "Error", .icon = platform::BoxIcon::Exclamation});
        return;
    }
    m_link.PortNumber = *number;
    m_virtualPort.setPortScroll(*number);
    m_display.setPortText("KSD Port: " + text);
}

bool DriverConnection::OpenTheDeviceDriver()
{
    m_display.ShowPleaseWait();
    CloseTheDeviceDriver();
    if (m_link.PortNumber == 0 && !Detect()) {
        m_boxes.show({.text =
                          "Was unable to open the Teslin Device Driver.  Check to see if the driver is installed and "
                          "the Teslin is attached",
                      .icon = platform::BoxIcon::Critical});
        m_buttons.EnableButtons(true);
        m_display.HidePleaseWait();
        m_status.setStatusText("");
        return false;
    }
    const bool opened = openPort();
    m_status.setStatusText("");
    m_display.HidePleaseWait();
    return opened;
}

bool DriverConnection::openPort()
{
    m_port.setRThreshold(1);
    if (const auto set = m_port.setCommPort(m_link.PortNumber); !set) {
        sayCouldNotOpen(set.error());
        return false;
    }
    if (const auto opened = m_port.setPortOpen(true); !opened) {
        sayCouldNotOpen(opened.error());
        return false;
    }
    if (!m_port.PortOpen()) {
        m_display.setIdentification(Identification::Driver, "Device driver did not open");
        m_display.showIdentification(Identification::Driver, Shown::ValueAlone);
        m_buttons.EnableButtons(true);
        return false;
    }
    GetDriverSettings();
    return true;
}

void DriverConnection::sayCouldNotOpen(const platform::SystemError& error)
{
    m_boxes.show({.text = "Could not open COM" + std::to_string(m_link.PortNumber) + ", " + error.description,
                  .icon = platform::BoxIcon::Critical});
}

void DriverConnection::CloseTheDeviceDriver()
{
    if (m_port.PortOpen()) {
        if (m_port.InBufferCount() >= 1) {
            m_status.setStatusText("waiting for the driver to finish -> " + m_port.Input());
        }
        (void)m_port.setPortOpen(false); // closing cannot be refused
    }
    // Kept behaviour kb-emptied-labels: these two are true of an open port only.
    m_display.setIdentification(Identification::Copyright, "");
    m_display.setIdentification(Identification::Driver, "");
}

void DriverConnection::GetDriverSettings()
{
    if (!m_port.PortOpen()) {
        return;
    }
    m_port.setRThreshold(0);
    if (const auto name = replies::driverName(exchange(commands::kDriverVersion))) {
        identify(Identification::Driver, *name);
    }
    if (const auto version = replies::firmwareVersion(exchange(commands::kDeviceVersion))) {
        m_link.FirmwareVersion = *version;
        identify(Identification::Firmware, *version);
    }
    if (const auto text = replies::identification(exchange(commands::kIdentify))) {
        identify(Identification::Copyright, *text);
    }
    readKeyboardLanguageId();
    m_display.GetLanguageName(m_link.KeyboardLanguageId);
    m_port.setRThreshold(1);
}

void DriverConnection::readKeyboardLanguageId()
{
    const auto first = replies::parameterValue(exchange(commands::readParameter("081")));
    if (!first) {
        return;
    }
    m_link.KeyboardLanguageId = *first;
    if (const auto second = replies::parameterValue(exchange(commands::readParameter("082")))) {
        m_link.KeyboardLanguageId += *second;
    }
}

std::string DriverConnection::exchange(std::string_view cmd)
{
    m_protocol.Send_Cmd(cmd);
    return m_port.Input();
}

void DriverConnection::identify(Identification which, std::string_view text)
{
    m_display.setIdentification(which, padded(text));
    m_display.showIdentification(which, Shown::WithTitle);
}

void DriverConnection::ClearSettings()
{
    constexpr std::array kAll = {Identification::Firmware, Identification::Copyright, Identification::Driver};
    for (const Identification which : kAll) {
        m_display.setIdentification(which, "");
    }
    for (const Identification which : kAll) {
        m_display.showIdentification(which, Shown::Nothing);
    }
    m_status.setStatusText("");
}

} // namespace device
