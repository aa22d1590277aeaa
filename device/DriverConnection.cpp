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

DriverConnection::DriverConnection(LinkState& link, CommandProtocol& protocol, platform::SerialControl& MSComm1,
                                   platform::DeviceObject& driver, platform::EventPump& events, LinkWindow& window,
                                   PortSettings& settings, platform::MessageBoxes& boxes)
    : m_link(link)
    , m_protocol(protocol)
    , m_port(MSComm1)
    , m_driver(driver)
    , m_events(events)
    , m_window(window)
    , m_settings(settings)
    , m_boxes(boxes)
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
    m_window.setIdentification(Identification::Driver, "Getting virtual com port number...");
    CloseTheDeviceDriver();
    m_protocol.ShowActiveSend();
    m_events.processWithoutInput(); // opening may take a while, and nobody is asked meanwhile
    const platform::Result<void> opened = m_driver.open(R"(\\.\)" + m_link.DriverFriendlyName);
    m_protocol.ShowInactiveSend();
    if (!opened) {
        m_window.setIdentification(Identification::Driver, "Unable to get virtual com port number.");
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
        m_window.setIdentification(Identification::Driver, "Unable to get virtual com port number..");
        return false;
    }
    const std::optional<std::string> name = replies::portName(answer.value());
    if (name) {
        m_settings.setPortText(*name);
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
    const std::string text = m_settings.portText();
    const std::optional<std::int16_t> number = replies::portNumber(text);
    if (!number) {
        m_boxes.show({.text = "Could not open Teslin port!", .title = "Error", .icon = platform::BoxIcon::Exclamation});
        return;
    }
    m_link.PortNumber = *number;
    m_settings.setPortScroll(*number);
    m_window.setPortText("KSD Port: " + text);
}

bool DriverConnection::OpenTheDeviceDriver()
{
    m_window.ShowPleaseWait();
    CloseTheDeviceDriver();
    if (m_link.PortNumber == 0 && !Detect()) {
        m_boxes.show({.text =
                          "Was unable to open the Teslin Device Driver.  Check to see if the driver is installed and "
                          "the Teslin is attached",
                      .icon = platform::BoxIcon::Critical});
        m_window.EnableButtons(true);
        m_window.HidePleaseWait();
        m_window.setStatusText("");
        return false;
    }
    const bool opened = openPort();
    m_window.setStatusText("");
    m_window.HidePleaseWait();
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
        m_window.setIdentification(Identification::Driver, "Device driver did not open");
        m_window.showDriverName();
        m_window.EnableButtons(true);
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
            m_window.setStatusText("waiting for the driver to finish -> " + m_port.Input());
        }
        (void)m_port.setPortOpen(false); // closing cannot be refused
    }
    // Kept behaviour kb-emptied-labels: these two are true of an open port only.
    m_window.setIdentification(Identification::Copyright, "");
    m_window.setIdentification(Identification::Driver, "");
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
    m_window.GetLanguageName();
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
    m_window.setIdentification(which, padded(text));
    m_window.showIdentification(which, true);
}

void DriverConnection::ClearSettings()
{
    constexpr std::array kAll = {Identification::Firmware, Identification::Copyright, Identification::Driver};
    for (const Identification which : kAll) {
        m_window.setIdentification(which, "");
    }
    for (const Identification which : kAll) {
        m_window.showIdentification(which, false);
    }
    m_window.setStatusText("");
}

} // namespace device
