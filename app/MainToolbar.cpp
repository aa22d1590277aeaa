#include "app/MainToolbar.h"

#include <QToolButton>

namespace app {

namespace {

struct ButtonTexts
{
    ToolbarKey key;
    const char* name;
    const char* caption;
    const char* toolTip;
};

constexpr std::array<ButtonTexts, 7> kButtons = {{
    {ToolbarKey::Retrieve, "KEY_RETRIEVE", "Retrieve", "Get the current values from the attached Teslin"},
    {ToolbarKey::Update, "KEY_UPDATE", "Update", "Send the below config to the attached Teslin"},
    {ToolbarKey::Load, "KEY_LOAD", "Load File", "Load the below table from a file"},
    {ToolbarKey::Save, "KEY_SAVE", "Save File", "Save the below table to a file"},
    {ToolbarKey::Default, "KEY_DEFAULT", "Set Default", "Preset the table below to the factory defaults"},
    {ToolbarKey::Summary, "KEY_SUMMARY", "Summary", "Create a summary of the settings below"},
    {ToolbarKey::Exit, "KEY_EXIT", "Exit", "Exit the program"},
}};

const QString kExit = QStringLiteral("Exit");

} // namespace

MainToolbar::MainToolbar(QWidget* parent)
    : QToolBar(parent)
{
    setObjectName(QStringLiteral("Toolbar1"));
    setWindowTitle(tr("Toolbar"));
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu); // its menu would offer to hide the toolbar
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (const ButtonTexts& texts : kButtons) {
        auto* action = new QAction(QLatin1String(texts.caption), this);
        action->setObjectName(QLatin1String(texts.name));
        action->setToolTip(QLatin1String(texts.toolTip));
        connect(action, &QAction::triggered, this, [this, key = texts.key] { emit buttonClicked(key); });
        addAction(action);
        auto* button = qobject_cast<QToolButton*>(widgetForAction(action));
        button->setObjectName(action->objectName());
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleDescription(action->toolTip());
        m_buttons[static_cast<std::size_t>(texts.key)] = action;
    }
}

void MainToolbar::enableButtons(bool enabled)
{
    for (const ButtonTexts& texts : kButtons) {
        if (texts.key != ToolbarKey::Exit) {
            button(texts.key).setEnabled(enabled);
        }
    }
}

void MainToolbar::setExitCaption(const QString& caption)
{
    button(ToolbarKey::Exit).setText(caption);
}

bool MainToolbar::exitReadsExit() const
{
    return m_buttons[static_cast<std::size_t>(ToolbarKey::Exit)]->text() == kExit;
}

} // namespace app
