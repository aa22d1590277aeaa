#include "app/dialogs/frmOptions.h"

#include "app/looks/Fonts.h"
#include "device/Replies.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/FrontWindow.h"
#include "platform/qt/ShownWindow.h"
#include "platform/qt/Spoken.h"
#include "widgets/PlainLabel.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace app {

using platform::toAnsi;
using platform::toQString;

namespace {

constexpr const char* kHint = "Enter either the Teslin driver's\r\n"
                              "\"Friendly Name\" or the Virtual  Port number.\r\n"
                              "The Friendly Name is usually \"Teslin\".";
constexpr int kBoxCharacters = 24;

QLineEdit* makeBox(const char* name, QWidget* parent)
{
    auto* box = new QLineEdit(parent);
    box->setObjectName(QLatin1String(name));
    box->setFont(courierNew(box->font()));
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * kBoxCharacters);
    return box;
}

QPushButton* makeButton(const char* name, const QString& caption, QWidget* parent)
{
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(name));
    return button;
}

} // namespace

frmOptions::frmOptions(device::LinkState& link, device::Operations& operations, device::DriverConnection& connection,
                       device::VirtualPort& virtualPort, platform::MessageBoxes& boxes, platform::WindowOrder& order,
                       std::function<void()> saveProgramConfig, QWidget* parent)
    : QDialog(parent)
    , m_link(link)
    , m_operations(operations)
    , m_connection(connection)
    , m_virtualPort(virtualPort)
    , m_boxes(boxes)
    , m_order(order)
    , m_saveProgramConfig(std::move(saveProgramConfig))
    , tbsOptions(new QTabBar(this))
{
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("KSD Driver Setup"));
    setWindowModality(Qt::WindowModal);
    tbsOptions->setObjectName(QStringLiteral("tbsOptions"));
    tbsOptions->setExpanding(false);
    platform::setSpoken(*tbsOptions, QStringLiteral("Pages"), QStringLiteral("There is one page"));
    tbsOptions->addTab(QStringLiteral("Enter KSD driver information"));
    buildPage();
    cmdOK = makeButton("cmdOK", QStringLiteral("OK"), this);
    cmdCancel = makeButton("cmdCancel", QStringLiteral("Cancel"), this);
    cmdOK->setDefault(true);
    platform::setSpoken(*cmdOK, QStringLiteral("Saves the settings"));
    platform::setSpoken(*cmdCancel, QStringLiteral("Leaves the settings file as it is"));

    auto* strip = new QVBoxLayout;
    strip->setSpacing(0);
    strip->addWidget(tbsOptions);
    for (QWidget* page : picOptions) {
        strip->addWidget(page, 1);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* column = new QVBoxLayout(this);
    column->addLayout(strip, 1);
    column->addLayout(buttons);
    connectEverything();
}

frmOptions::~frmOptions()
{
    m_virtualPort.setListener(nullptr);
}

void frmOptions::buildPage()
{
    auto* page = new QFrame(this);
    page->setObjectName(QStringLiteral("picOptions"));
    page->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    picOptions.push_back(page);

    auto* lblHint = new widgets::PlainLabel(QStringLiteral("lblHint"), kHint, page);
    auto* lblFriendlyName = new widgets::PlainLabel(QStringLiteral("lblFriendlyName"), "Friendly Name:", page);
    txtFriendlyName = makeBox("txtFriendlyName", page);
    // Kept behaviour kb-same-letter: both tests go by the same letter.
    btnTestName = makeButton("btnTestName", QStringLiteral("&Test"), page);
    auto* lblComPort = new widgets::PlainLabel(QStringLiteral("lblComPort"), "Virtual Port:", page);
    txtComPort = makeBox("txtComPort", page);
    btnTestPort = makeButton("btnTestPort", QStringLiteral("&Test"), page);
    sclComPort = new QScrollBar(Qt::Horizontal, page);
    sclComPort->setObjectName(QStringLiteral("sclComPort"));
    platform::setSpoken(*sclComPort, QStringLiteral("Virtual Port number"), QStringLiteral("Chooses the port to test"));
    sclComPort->setRange(device::VirtualPort::kLowest, device::VirtualPort::kHighest);
    sclComPort->setSingleStep(1);
    sclComPort->setInvertedControls(false); // or the right arrow would count down
    sclComPort->setFocusPolicy(Qt::StrongFocus);
    platform::setSpoken(*txtFriendlyName, QStringLiteral("The name of the driver's device object"));
    platform::setSpoken(*btnTestName, QStringLiteral("Asks the driver of this name for its port"));
    platform::setSpoken(*txtComPort, QStringLiteral("The driver's virtual COM port"));
    platform::setSpoken(*btnTestPort, QStringLiteral("Opens the chosen port"));
    lblFriendlyName->setBuddy(txtFriendlyName);
    lblComPort->setBuddy(txtComPort);

    auto* grid = new QGridLayout(page);
    grid->addWidget(lblHint, 0, 0, 1, 3);
    grid->setRowMinimumHeight(1, 8);
    grid->addWidget(lblFriendlyName, 2, 0);
    grid->addWidget(txtFriendlyName, 2, 1);
    grid->addWidget(btnTestName, 2, 2);
    grid->addWidget(lblComPort, 3, 0);
    grid->addWidget(txtComPort, 3, 1);
    grid->addWidget(btnTestPort, 3, 2);
    grid->addWidget(sclComPort, 4, 1);
    grid->setRowStretch(5, 1);
    grid->setColumnStretch(1, 1);
}

void frmOptions::connectEverything()
{
    m_tests.add(*btnTestName);
    m_tests.add(*btnTestPort);
    connect(txtFriendlyName, &QLineEdit::textChanged, this, &frmOptions::txtFriendlyName_Change);
    connect(txtComPort, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_virtualPort.setPortText(toAnsi(text)); });
    connect(sclComPort, &QScrollBar::valueChanged, this, &frmOptions::sclComPort_Change);
    connect(btnTestName, &QPushButton::clicked, this, &frmOptions::btnTestName_Click);
    connect(btnTestPort, &QPushButton::clicked, this, &frmOptions::btnTestPort_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmOptions::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmOptions::cmdCancel_Click);
    connect(tbsOptions, &QTabBar::currentChanged, this, &frmOptions::tbsOptions_Click);
    m_virtualPort.setListener(this);
    followVirtualPort();
}

// --- Opening and closing ---

void frmOptions::showInFront()
{
    const bool opens = !isVisible();
    if (opens) {
        Form_Load();
        txtFriendlyName->setFocus();
        txtFriendlyName->selectAll();
    }
    platform::showInFront(*this, m_order);
    if (opens) {
        platform::waitUntilShown(*this); // its frame is known then
        centreOnScreen();
    }
}

void frmOptions::Form_Load()
{
    centreOnScreen();
    txtFriendlyName->setText(toQString(m_link.DriverFriendlyName));
    // The bar shows the port that is named, so that a test by port tests that one.
    if (const auto number = device::replies::portNumber(m_virtualPort.portText())) {
        m_virtualPort.setPortScroll(*number);
    }
    m_portTextAtOpening = m_virtualPort.portText();
    m_portScrollAtOpening = m_virtualPort.portScroll();
    m_testSetPort = false;
}

void frmOptions::centreOnScreen()
{
    if (!isVisible()) {
        adjustSize();
    }
    // Before it was ever shown its frame is taken to be like that of the main window.
    const QWidget& framed = frameSize() == size() && parentWidget() != nullptr ? *parentWidget()->window() : *this;
    const QSize outer = size() + framed.frameSize() - framed.size();
    move(screen()->availableGeometry().center() - QRect({}, outer).center());
}

void frmOptions::cmdOK_Click()
{
    m_saveProgramConfig();
    accept();
}

// Kept behaviour kb-cancelled-options: the name counts since it was typed, and is saved when the program ends.
void frmOptions::cmdCancel_Click()
{
    if (m_testSetPort && m_link.PortNumber != 0) {
        m_virtualPort.setPortScroll(m_link.PortNumber);
        m_virtualPort.setPortText("COM" + std::to_string(m_link.PortNumber));
    } else {
        m_virtualPort.setPortScroll(m_portScrollAtOpening);
        m_virtualPort.setPortText(m_portTextAtOpening);
    }
    QDialog::reject();
}

void frmOptions::reject()
{
    if (!m_isTesting) {
        cmdCancel_Click();
    }
}

// --- Editing ---

void frmOptions::txtFriendlyName_Change()
{
    m_link.DriverFriendlyName = toAnsi(txtFriendlyName->text());
}

void frmOptions::sclComPort_Change()
{
    m_virtualPort.setPortScroll(sclComPort->value());
    m_virtualPort.setPortText("COM" + std::to_string(sclComPort->value()));
}

// The controls show the port setup without taking that for an edit.
void frmOptions::virtualPortChanged(device::VirtualPort::Part /*part*/)
{
    followVirtualPort();
}

void frmOptions::followVirtualPort()
{
    const QSignalBlocker quietBox(txtComPort);
    const QSignalBlocker quietBar(sclComPort);
    if (toAnsi(txtComPort->text()) != m_virtualPort.portText()) {
        txtComPort->setText(toQString(m_virtualPort.portText()));
    }
    sclComPort->setValue(m_virtualPort.portScroll());
}

void frmOptions::tbsOptions_Click()
{
    for (int tab = 0; tab < tbsOptions->count(); ++tab) {
        picOptions[static_cast<std::size_t>(tab)]->setVisible(tab == tbsOptions->currentIndex());
    }
}

void frmOptions::keyPressEvent(QKeyEvent* event)
{
    Form_KeyDown(*event);
    if (!event->isAccepted()) {
        QDialog::keyPressEvent(event);
    }
}

// Ctrl+Tab goes round the tabs, with Shift the other way.
void frmOptions::Form_KeyDown(QKeyEvent& event)
{
    const bool forwards = event.key() == Qt::Key_Tab;
    const bool backwards = event.key() == Qt::Key_Backtab;
    event.setAccepted(event.modifiers().testFlag(Qt::ControlModifier) && (forwards || backwards));
    if (event.isAccepted()) {
        const int tabs = tbsOptions->count();
        tbsOptions->setCurrentIndex((tbsOptions->currentIndex() + (forwards ? 1 : tabs - 1)) % tabs);
    }
}

// --- Tests ---

void frmOptions::btnTestName_Click()
{
    runTest(*btnTestName, [this] { testName(); });
}

void frmOptions::btnTestPort_Click()
{
    runTest(*btnTestPort, [this] { testPort(); });
}

void frmOptions::runTest(QPushButton& button, const std::function<void()>& test)
{
    m_operations.run([this, &button, &test] {
        m_isTesting = true;
        const bool hadFocus = button.hasFocus();
        const QString caption = button.text();
        const auto enable = [this, &button](bool enabled) {
            cmdOK->setEnabled(enabled);
            cmdCancel->setEnabled(enabled);
            button.setEnabled(enabled);
        };
        enable(false);
        button.setText(QStringLiteral("testing"));
        test();
        enable(true);
        button.setText(caption);
        if (hadFocus) {
            button.setFocus();
        }
        m_isTesting = false;
    });
}

void frmOptions::testName()
{
    const std::string name = m_link.DriverFriendlyName;
    const int numberBefore = m_link.PortNumber;
    const bool found = m_connection.Detect();
    m_testSetPort = m_testSetPort || found || m_link.PortNumber != numberBefore;
    if (found) {
        say(name + " successfully opened (COM port " + std::to_string(m_link.PortNumber) + " found)");
        sclComPort->setValue(m_link.PortNumber); // it can be moved while the answer is read
    } else {
        say("Unable to open " + name);
    }
}

// Kept behaviour kb-saved-port: the number of the bar is opened, not the one in the box.
// Kept behaviour kb-tested-port: the number stays, whatever comes of the test.
// Kept behaviour kb-open-port: a good test leaves the port open.
void frmOptions::testPort()
{
    m_connection.CloseTheDeviceDriver();
    m_link.PortNumber = static_cast<std::int16_t>(sclComPort->value());
    m_testSetPort = true;
    bool opened = m_connection.OpenTheDeviceDriver();
    if (opened && m_link.connectionLost) {
        m_connection.CloseTheDeviceDriver(); // nobody is at its other end any more
        opened = false;
    }
    if (opened) {
        say("Teslin successfully opened"); // and stays open: the window shows what it found
    } else {
        say("Unable to open the Teslin");
        sclComPort->setValue(m_link.PortNumber); // it can be moved while the test waits
    }
}

void frmOptions::say(std::string text)
{
    // Nobody waits for the outcome when the program is being closed.
    if (!m_operations.isClosing()) {
        m_boxes.show({.text = std::move(text)});
    }
}

} // namespace app
