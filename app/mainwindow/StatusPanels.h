#pragma once

#include "tables/StatusLine.h"

#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>

namespace app {

// The status bar: two panels, and a progress bar from the start of a transfer to the user's next action. The panels are
// widgets of their own, so that no passing hint wipes them.
class StatusPanels final : public tables::StatusLine
{
public:
    // Fills the given status bar, which owns the panels.
    explicit StatusPanels(QStatusBar& bar);

    void setStatusText(std::string_view text) override; // the first panel
    void setSecond(const QString& text);

    // Shows the progress bar at done of total rows.
    void showProgress(int done, int total);
    void hideProgress();

private:
    QLabel* m_first = nullptr;
    QLabel* m_second = nullptr;
    QProgressBar* m_progress = nullptr;
};

} // namespace app
