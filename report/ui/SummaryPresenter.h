#pragma once

#include "report/SummaryFacts.h"
#include "report/ui/frmSummary.h"

namespace report {

enum class Summary { Configuration, KeyboardLanguage };

// Shows a table's summary in the summary window and waits until the user closes it.
class SummaryPresenter final
{
public:
    explicit SummaryPresenter(SummaryServices services);

    // Builds the summary from what the table holds now and returns when the window has been closed; events run
    // meanwhile. Called again before the first call has returned, it shows the new summary in the window and returns at
    // once: one wait is enough. Must not be destroyed while a call waits.
    void show(Summary summary, const TableAccess& table, const SummaryFacts& facts);

    // Closes the window, if it is open.
    void close();

private:
    void waitUntilClosed();

    frmSummary m_window;
    bool m_isWaiting = false;
};

} // namespace report
