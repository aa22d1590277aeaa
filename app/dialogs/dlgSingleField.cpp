#include "app/dialogs/dlgSingleField.h"

#include "app/looks/Fonts.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/Spoken.h"
#include "tables/KeyFilters.h"
#include "widgets/KeysOnly.h"
#include "widgets/PlainLabel.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>

namespace app {

using platform::toAnsi;
using platform::toQString;

namespace {

constexpr int kAddressDigits = 3;
constexpr int kValueDigits = 2;
constexpr int kLineCharacters = 56; // of the instructions

void padWithZeros(QLineEdit& box, int digits)
{
    if (box.text().size() < digits) {
        box.setText(box.text().rightJustified(digits, QLatin1Char('0')));
    }
}

// A menu that opens takes the focus only for a while.
bool isLoss(const QEvent& event)
{
    return event.type() == QEvent::FocusOut && static_cast<const QFocusEvent&>(event).reason() != Qt::PopupFocusReason;
}

} // namespace

dlgSingleField::dlgSingleField(device::SingleSetting& setting, platform::WindowOrder& order, QWidget* parent)
    : QDialog(parent)
    , m_setting(setting)
    , m_order(order)
    , txtSingleAddress(new widgets::EntryBox(QStringLiteral("txtSingleAddress"), kAddressDigits, this))
    , txtSingleValue(new widgets::EntryBox(QStringLiteral("txtSingleValue"), kValueDigits, this))
    , btnGetCurrentSingle(new QPushButton(QStringLiteral("Get current value"), this))
    , btnUpdateSingleField(new QPushButton(QStringLiteral("Update the Teslin"), this))
    , OKButton(new QPushButton(QStringLiteral("&Done"), this))
{
    setObjectName(QStringLiteral("dlgSingleField"));
    setWindowTitle(QStringLiteral("Change Single Field"));
    setUpBox(*txtSingleAddress);
    setUpBox(*txtSingleValue);
    txtSingleAddress->setKeyFilter([this](int& KeyAscii) { txtSingleAddress_KeyPress(KeyAscii); });
    txtSingleValue->setKeyFilter([this](int& KeyAscii) { txtSingleValue_KeyPress(KeyAscii); });
    setUpButton(*btnGetCurrentSingle, QStringLiteral("btnGetCurrentSingle"));
    setUpButton(*btnUpdateSingleField, QStringLiteral("btnUpdateSingleField"));
    setUpButton(*OKButton, QStringLiteral("OKButton"));
    m_deviceButtons.add(*btnGetCurrentSingle);
    m_deviceButtons.add(*btnUpdateSingleField);
    connect(btnGetCurrentSingle, &QPushButton::clicked, this, &dlgSingleField::btnGetCurrentSingle_Click);
    connect(btnUpdateSingleField, &QPushButton::clicked, this, &dlgSingleField::btnUpdateSingleField_Click);
    connect(OKButton, &QPushButton::clicked, this, &dlgSingleField::OKButton_Click);
    platform::setSpoken(*txtSingleAddress, QStringLiteral("Three hexadecimal digits"));
    platform::setSpoken(*txtSingleValue, QStringLiteral("Two hexadecimal digits"));
    platform::setSpoken(*btnGetCurrentSingle, QStringLiteral("Reads the value at the address from the Teslin"));
    platform::setSpoken(*btnUpdateSingleField, QStringLiteral("Writes the value at the address to the Teslin"));
    platform::setSpoken(*OKButton, QStringLiteral("Closes this box"));
    layOut();
}

void dlgSingleField::setUpBox(widgets::EntryBox& box)
{
    box.setFont(courierNew(font()));
    box.installEventFilter(this);
    new widgets::KeysOnly(box);
}

// Enter must never send to the reader by itself, so no button is the default. A click moves the focus, so that the box
// it comes from is padded first.
void dlgSingleField::setUpButton(QPushButton& button, const QString& name)
{
    button.setObjectName(name);
    button.setAutoDefault(false);
    button.setDefault(false);
    button.setFocusPolicy(Qt::StrongFocus);
}

void dlgSingleField::layOut()
{
    auto* lblAddress = new widgets::PlainLabel(QStringLiteral("lblAddress"), "Address", this);
    auto* lblData = new widgets::PlainLabel(QStringLiteral("lblData"), "Data", this);
    lblAddress->setBuddy(txtSingleAddress);
    lblData->setBuddy(txtSingleValue);
    auto* frmInstructions = new QGroupBox(QStringLiteral("Instructions"), this);
    frmInstructions->setObjectName(QStringLiteral("frmInstructions"));
    auto* lblInstructions = new widgets::PlainLabel(
        QStringLiteral("lblInstructions"),
        "Type in the address and new value (both in HEX), then click \"Update\". Click \"Get current value\" to "
        "retrieve the value from the address.  Click \"Done\" to exit",
        frmInstructions);
    lblInstructions->setWordWrap(true);
    lblInstructions->setMinimumWidth(fontMetrics().averageCharWidth() * kLineCharacters);
    auto* inFrame = new QVBoxLayout(frmInstructions);
    inFrame->addWidget(lblInstructions);

    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(12);
    grid->addWidget(lblAddress, 0, 0);
    grid->addWidget(txtSingleAddress, 0, 1);
    grid->addWidget(btnGetCurrentSingle, 0, 3);
    grid->addWidget(lblData, 1, 0);
    grid->addWidget(txtSingleValue, 1, 1);
    grid->addWidget(btnUpdateSingleField, 1, 3);
    grid->addWidget(frmInstructions, 2, 0, 1, 4);
    grid->addWidget(OKButton, 3, 3);
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(2, 1);
}

void dlgSingleField::showInFront()
{
    if (!isVisible()) {
        Form_Load();
        txtSingleAddress->setFocus();
        txtSingleAddress->selectAll();
    }
    show();
    raise();
    activateWindow();
}

void dlgSingleField::setAlwaysOnTop(bool onTop)
{
    m_alwaysOnTop = onTop;
    m_order.SetWindowPos(*this, onTop ? platform::kTopmost : platform::kNotTopmost, platform::kKeepSizeAndPlace);
}

void dlgSingleField::Form_Load()
{
    setAlwaysOnTop(true);
    txtSingleAddress->setText(QStringLiteral("000"));
    txtSingleValue->setText(QStringLiteral("00"));
}

void dlgSingleField::txtSingleAddress_KeyPress(int& KeyAscii)
{
    KeyAscii = tables::hexKey(KeyAscii);
}

void dlgSingleField::txtSingleValue_KeyPress(int& KeyAscii)
{
    KeyAscii = tables::hexKey(KeyAscii);
}

void dlgSingleField::txtSingleAddress_LostFocus()
{
    padWithZeros(*txtSingleAddress, kAddressDigits);
}

void dlgSingleField::txtSingleValue_LostFocus()
{
    padWithZeros(*txtSingleValue, kValueDigits);
}

bool dlgSingleField::eventFilter(QObject* watched, QEvent* event)
{
    if (isLoss(*event)) {
        if (watched == txtSingleAddress) {
            txtSingleAddress_LostFocus();
        } else if (watched == txtSingleValue) {
            txtSingleValue_LostFocus();
        }
    }
    return QDialog::eventFilter(watched, event);
}

void dlgSingleField::btnGetCurrentSingle_Click()
{
    if (const auto value = m_setting.read(toAnsi(txtSingleAddress->text()))) {
        txtSingleValue->setText(toQString(*value));
    }
}

void dlgSingleField::btnUpdateSingleField_Click()
{
    // Kept behaviour kb-single-as-typed: too many digits go out as they are.
    // Taken now: the boxes can be edited while the reader is waited for.
    m_setting.update(toAnsi(txtSingleAddress->text()), toAnsi(txtSingleValue->text()));
}

void dlgSingleField::OKButton_Click()
{
    close();
}

} // namespace app
