#include "app/mainwindow/StatusPanels.h"

#include "platform/qt/AnsiText.h"

namespace app {

namespace {

constexpr int kAboveText = 3; // and below it, the panel's frame included

QString words(const char* text)
{
    return QLatin1String(text);
}

} // namespace

StatusPanels::StatusPanels(QStatusBar& bar)
{
    bar.setObjectName(QStringLiteral("StatusBar1"));
    bar.setSizeGripEnabled(true);
    const auto addPanel = [&bar](const QString& name, const QString& spoken, int stretch) {
        auto* panel = new QLabel(&bar);
        panel->setObjectName(name);
        panel->setAccessibleName(spoken);
        panel->setTextFormat(Qt::PlainText);
        panel->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
        // A long reply in a panel must neither widen the window nor make the bar taller.
        panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        panel->setFixedHeight(panel->fontMetrics().height() + 2 * kAboveText);
        // A reply shown whole may carry its line end; its first line is the one to be seen.
        panel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        panel->setIndent(0); // it would lower the text as well
        panel->setMargin(kAboveText - panel->frameWidth());
        bar.addWidget(panel, stretch);
        return panel;
    };
    m_first = addPanel(QStringLiteral("StatusBar1_1"), words("Status"), 3);
    m_second = addPanel(QStringLiteral("StatusBar1_2"), words("Port"), 1);
    m_progress = new QProgressBar(&bar);
    m_progress->setObjectName(QStringLiteral("pgbTransfer"));
    m_progress->setAccessibleName(words("Rows transferred"));
    m_progress->setFormat(words("%v of %m rows"));
    m_progress->setFixedWidth(m_progress->fontMetrics().horizontalAdvance(QStringLiteral("M")) * 14);
    m_progress->setMaximumHeight(m_first->height());
    bar.addWidget(m_progress);
    m_progress->hide();
}

void StatusPanels::setStatusText(std::string_view text)
{
    m_first->setText(platform::toQString(text));
}

void StatusPanels::setSecond(const QString& text)
{
    m_second->setText(text);
}

void StatusPanels::showProgress(int done, int total)
{
    m_progress->setMaximum(total);
    m_progress->setValue(done);
    m_progress->show();
}

void StatusPanels::hideProgress()
{
    m_progress->hide();
    m_progress->reset();
}

} // namespace app
