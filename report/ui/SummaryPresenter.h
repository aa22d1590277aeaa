#pragma once

#include "report/SummaryFacts.h"
#include "report/ui/frmSummary.h"

#include <optional>

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

    // The window is built when it is first needed, so that the program starts faster.
    frmSummary& window();

    SummaryServices m_services;
    std::optional<frmSummary> m_window;
    bool m_isWaiting = false;
};

} // namespace report
