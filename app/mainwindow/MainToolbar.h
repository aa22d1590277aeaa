#pragma once

#include "tables/OperationButtons.h"

#include <QAction>
#include <QLabel>
#include <QToolBar>

#include <array>

namespace app {

enum class ToolbarKey { Retrieve, Update, Load, Save, Default, Summary, Exit };

// The toolbar with its seven buttons. Each button carries its key as object name ("KEY_RETRIEVE").
class MainToolbar final : public QToolBar, public tables::OperationButtons
{
    Q_OBJECT

public:
    explicit MainToolbar(QWidget* parent = nullptr);

    [[nodiscard]] QAction& button(ToolbarKey key) { return *m_buttons[static_cast<std::size_t>(key)]; }

    void EnableButtons(bool enabled) override; // buttons 1 to 6
    void setExitCaption(std::string_view caption) override;
    void enableExitButton() override;
    [[nodiscard]] bool exitReadsExit() const;

signals:
    // Buttons are about to be switched off.
    void aboutToDisable();
    void buttonClicked(app::ToolbarKey key);

private:
    void resizeEvent(QResizeEvent* event) override;

    static constexpr std::size_t kButtonCount = 7;
    std::array<QAction*, kButtonCount> m_buttons{};
    QLabel* m_picture = nullptr; // at the far end, no part of the row of buttons
};

} // namespace app
