#include "app/mainwindow/IdentificationStrip.h"

#include "platform/qt/AnsiText.h"
#include "widgets/ElidedLabel.h"

#include <QHBoxLayout>

namespace app {

namespace {

// Colours 12, 4, 10 and 2 of the 16-colour console palette.
constexpr QRgb kLightRed = 0xFFFF0000;
constexpr QRgb kDarkRed = 0xFF800000;
constexpr QRgb kLightGreen = 0xFF00FF00;
constexpr QRgb kDarkGreen = 0xFF008000;

} // namespace

IdentificationStrip::IdentificationStrip(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("identificationStrip"));
    entry(device::Identification::Driver) = {makeLabel("lblDriverLabel", tr("Driver:")),
                                             makeLabel("lblDriverName", {})};
    entry(device::Identification::Firmware) = {makeLabel("lblFirmware", tr("Firmware:")),
                                               makeLabel("lblFirmwareValue", {})};
    entry(device::Identification::Copyright) = {makeLabel("lblCopyright", tr("Device:")),
                                                makeLabel("lblCopyRightValue", {})};
    m_language = makeLabel("lblLanguage", {});
    m_send = new widgets::Lamp(kLightRed, kDarkRed, this);
    m_send->setObjectName(QStringLiteral("shpSend"));
    m_send->setAccessibleName(tr("Sending"));
    m_send->setToolTip(tr("Lit while a command is sent"));
    m_recv = new widgets::Lamp(kLightGreen, kDarkGreen, this);
    m_recv->setObjectName(QStringLiteral("shpRecv"));
    m_recv->setAccessibleName(tr("Receiving"));
    m_recv->setToolTip(tr("Lit when the Teslin answers"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 2, 0, 2);
    for (const Entry& shown : m_entries) {
        row->addWidget(shown.title);
        row->addWidget(shown.value);
        shown.title->setMinimumWidth(shown.title->sizeHint().width()); // only the values give way
        shown.title->hide();
        shown.value->hide();
    }
    row->addWidget(m_language);
    row->addStretch(1);
    row->addWidget(new QLabel(tr("Send"), this));
    row->addWidget(m_send);
    row->addSpacing(8);
    row->addWidget(new QLabel(tr("Receive"), this));
    row->addWidget(m_recv);
}

QLabel* IdentificationStrip::makeLabel(const char* name, const QString& text)
{
    auto* label = new widgets::ElidedLabel(Qt::ElideRight, this); // drivers may say a lot
    label->setObjectName(QLatin1String(name));
    label->setText(text);
    // A reply shown whole may carry its line end; only its first line is to be seen, where a single line would stand.
    label->setFixedHeight(label->fontMetrics().height());
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

void IdentificationStrip::setCaption(device::Identification which, std::string_view caption)
{
    QLabel* label = entry(which).value;
    const QString text = platform::toQString(caption);
    if (label->text() == text) {
        return;
    }
    label->setText(text);
    if (which == device::Identification::Driver) {
        emit lblDriverName_Change(text);
    }
}

void IdentificationStrip::showValueAndTitle(device::Identification which, bool visible)
{
    entry(which).title->setVisible(visible);
    entry(which).value->setVisible(visible);
}

void IdentificationStrip::showValue(device::Identification which)
{
    entry(which).value->show();
}

void IdentificationStrip::setLanguage(std::string_view caption)
{
    m_language->setText(platform::toQString(caption));
}

} // namespace app
