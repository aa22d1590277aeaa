#include "report/ui/SummaryPresenter.h"

#include "report/ConfigurationSummary.h"
#include "report/KeyboardLanguageSummary.h"

#include <QEventLoop>

#include <utility>

namespace report {

SummaryPresenter::SummaryPresenter(SummaryServices services)
    : m_window(std::move(services))
{}

void SummaryPresenter::show(Summary summary, const TableAccess& table, const SummaryFacts& facts)
{
    m_window.open();
    if (summary == Summary::Configuration) {
        m_window.showReport(frmSummary::tr("Configuration Summary"), summary_CFG(table, facts));
    } else {
        m_window.showReport(frmSummary::tr("Keyboard Language Summary"), summary_KB(table, facts));
    }
    if (!m_window.isVisible()) { // the table may run events while it is read
        return;
    }
    QEventLoop untilClosed;
    QObject::connect(&m_window, &frmSummary::unloaded, &untilClosed, &QEventLoop::quit);
    untilClosed.exec();
}

void SummaryPresenter::close()
{
    m_window.close();
}

} // namespace report
