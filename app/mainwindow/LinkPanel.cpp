#include "app/mainwindow/LinkPanel.h"

#include "app/settings/LanguageList.h"
#include "platform/qt/AnsiText.h"
#include "widgets/ElidedLabel.h"

#include <QHBoxLayout>

#include <utility>

namespace app {

namespace {

// Colours 12, 4, 10 and 2 of the 16-colour console palette.
constexpr QRgb kLightRed = 0xFFFF0000;
constexpr QRgb kDarkRed = 0xFF800000;
constexpr QRgb kLightGreen = 0xFF00FF00;
constexpr QRgb kDarkGreen = 0xFF008000;

} // namespace

LinkPanel::LinkPanel(StatusPanels& panels, platform::WindowOrder& order, std::filesystem::path programFolder,
                     QWidget* parent)
    : QWidget(parent)
    , m_panels(panels)
    , m_pleaseWait(order, parent)
    , m_programFolder(std::move(programFolder))
{
    setObjectName(QStringLiteral("identificationStrip"));
    entry(device::Identification::Driver) = {makeLabel("lblDriverLabel", QStringLiteral("Driver:")),
                                             makeLabel("lblDriverName", {})};
    entry(device::Identification::Firmware) = {makeLabel("lblFirmware", QStringLiteral("Firmware:")),
                                               makeLabel("lblFirmwareValue", {})};
    entry(device::Identification::Copyright) = {makeLabel("lblCopyright", QStringLiteral("Device:")),
                                                makeLabel("lblCopyRightValue", {})};
    m_languageName = makeLabel("lblLanguage", {});
    m_send = new widgets::Lamp(kLightRed, kDarkRed, this);
    m_send->setObjectName(QStringLiteral("shpSend"));
    m_send->setAccessibleName(QStringLiteral("Sending"));
    m_send->setToolTip(QStringLiteral("Lit while a command is sent"));
    m_recv = new widgets::Lamp(kLightGreen, kDarkGreen, this);
    m_recv->setObjectName(QStringLiteral("shpRecv"));
    m_recv->setAccessibleName(QStringLiteral("Receiving"));
    m_recv->setToolTip(QStringLiteral("Lit when the Teslin answers"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 2, 0, 2);
    for (const Entry& shown : m_entries) {
        row->addWidget(shown.title);
        row->addWidget(shown.value);
        shown.title->setMinimumWidth(shown.title->sizeHint().width()); // only the values give way
        shown.title->hide();
        shown.value->hide();
    }
    row->addWidget(m_languageName);
    row->addStretch(1);
    row->addWidget(new QLabel(QStringLiteral("Send"), this));
    row->addWidget(m_send);
    row->addSpacing(8);
    row->addWidget(new QLabel(QStringLiteral("Receive"), this));
    row->addWidget(m_recv);
}

QLabel* LinkPanel::makeLabel(const char* name, const QString& text)
{
    auto* label = new widgets::ElidedLabel(Qt::ElideRight, this); // drivers may say a lot
    label->setObjectName(QLatin1String(name));
    label->setText(text);
    // A reply shown whole may carry its line end; only its first line is to be seen, where a single line would stand.
    label->setFixedHeight(label->fontMetrics().height());
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

void LinkPanel::setPortText(std::string_view text)
{
    m_panels.setSecond(platform::toQString(text));
}

void LinkPanel::setLamp(device::Lamp which, bool lit)
{
    (which == device::Lamp::Send ? m_send : m_recv)->setLit(lit);
}

void LinkPanel::setIdentification(device::Identification which, std::string_view caption)
{
    QLabel* label = entry(which).value;
    const QString text = platform::toQString(caption);
    if (label->text() == text) {
        return;
    }
    label->setText(text);
    if (which == device::Identification::Driver) {
        m_panels.setStatusText(caption);
    }
}

void LinkPanel::showIdentification(device::Identification which, device::Shown shown)
{
    if (shown != device::Shown::ValueAlone) {
        entry(which).title->setVisible(shown == device::Shown::WithTitle);
    }
    entry(which).value->setVisible(shown != device::Shown::Nothing);
}

void LinkPanel::GetLanguageName(std::string_view KeyboardLanguageId)
{
    if (const auto caption = lookUpLanguage(m_programFolder, KeyboardLanguageId, m_language)) {
        m_languageName->setText(platform::toQString(*caption));
    }
}

void LinkPanel::ShowPleaseWait()
{
    m_pleaseWait.showOver(*window());
}

void LinkPanel::HidePleaseWait()
{
    m_pleaseWait.unload();
}

void LinkPanel::showProgress(int rowsDone, int rows)
{
    m_panels.showProgress(rowsDone, rows);
}

} // namespace app
