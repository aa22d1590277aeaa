#pragma once

#include <QAction>
#include <QLabel>
#include <QToolBar>

#include <array>

namespace app {

enum class ToolbarKey { Retrieve, Update, Load, Save, Default, Summary, Exit };

// The toolbar with its seven buttons. Each button carries its key as object name ("KEY_RETRIEVE").
class MainToolbar final : public QToolBar
{
    Q_OBJECT

public:
    explicit MainToolbar(QWidget* parent = nullptr);

    [[nodiscard]] QAction& button(ToolbarKey key) { return *m_buttons[static_cast<std::size_t>(key)]; }

    // Buttons 1 to 6; Exit is never disabled.
    void enableButtons(bool enabled);
    // "Exit", or "Abort" while a transfer runs. Decides what the button does.
    void setExitCaption(const QString& caption);
    [[nodiscard]] bool exitReadsExit() const;

signals:
    void buttonClicked(app::ToolbarKey key);

private:
    void resizeEvent(QResizeEvent* event) override;

    static constexpr std::size_t kButtonCount = 7;
    std::array<QAction*, kButtonCount> m_buttons{};
    QLabel* m_picture = nullptr; // at the far end, no part of the row of buttons
};

} // namespace app
