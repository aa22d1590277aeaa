#include "report/ui/SummaryPresenter.h"

#include "report/ConfigurationSummary.h"
#include "report/KeyboardLanguageSummary.h"

#include <QEventLoop>

#include <utility>

namespace report {

SummaryPresenter::SummaryPresenter(SummaryServices services)
    : m_services(std::move(services))
{}

frmSummary& SummaryPresenter::window()
{
    return m_window ? *m_window : m_window.emplace(m_services);
}

void SummaryPresenter::show(Summary summary, const TableAccess& table, const SummaryFacts& facts)
{
    window().open();
    if (summary == Summary::Configuration) {
        window().showReport(QStringLiteral("Configuration Summary"), summary_CFG(table, facts));
    } else {
        window().showReport(QStringLiteral("Keyboard Language Summary"), summary_KB(table, facts));
    }
    if (!m_isWaiting) {
        waitUntilClosed();
    }
}

void SummaryPresenter::waitUntilClosed()
{
    m_isWaiting = true;
    QEventLoop untilClosed;
    QObject::connect(&window(), &frmSummary::unloaded, &untilClosed, &QEventLoop::quit);
    // Reading the table runs events, in which the window may have been closed already. It may also be closed and opened
    // again while another wait keeps this one from going on. No loop runs any more when the program ends.
    while (window().isVisible() && untilClosed.exec() == 0) {
    }
    m_isWaiting = false;
}

void SummaryPresenter::close()
{
    if (m_window) {
        m_window->close();
    }
}

} // namespace report
