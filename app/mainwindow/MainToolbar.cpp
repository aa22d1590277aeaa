#include "app/mainwindow/MainToolbar.h"

#include "app/looks/ProductPicture.h"
#include "app/mainwindow/ToolbarIcon.h"
#include "platform/qt/AnsiText.h"

#include <QToolButton>

namespace app {

namespace {

struct ButtonTexts
{
    ToolbarKey key;
    const char* name;
    const char* caption;
    const char* toolTip;
    const char* picture;
    const char* shortcut; // none for what would throw a table away or end the program
};

constexpr std::array<ButtonTexts, 7> kButtons = {{
    {ToolbarKey::Retrieve, "KEY_RETRIEVE", "Retrieve", "Get the current values from the attached Teslin", "retrieve",
     "F5"},
    {ToolbarKey::Update, "KEY_UPDATE", "Update", "Send the below config to the attached Teslin", "update", "F6"},
    {ToolbarKey::Load, "KEY_LOAD", "Load File", "Load the below table from a file", "load", ""},
    {ToolbarKey::Save, "KEY_SAVE", "Save File", "Save the below table to a file", "save", ""},
    {ToolbarKey::Default, "KEY_DEFAULT", "Set Default", "Preset the table below to the factory defaults", "default",
     ""},
    {ToolbarKey::Summary, "KEY_SUMMARY", "Summary", "Create a summary of the settings below", "summary", "F7"},
    {ToolbarKey::Exit, "KEY_EXIT", "Exit", "Exit the program", "exit", ""},
}};

const QString kExit = QStringLiteral("Exit");
constexpr int kIconSize = 24;
constexpr int kPictureSize = 32;
constexpr int kPictureMargin = 6;

} // namespace

MainToolbar::MainToolbar(QWidget* parent)
    : QToolBar(parent)
{
    setObjectName(QStringLiteral("Toolbar1"));
    setWindowTitle(QStringLiteral("Toolbar"));
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu); // its menu would offer to hide the toolbar
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIconSize(QSize(kIconSize, kIconSize));
    for (const ButtonTexts& texts : kButtons) {
        auto* action = new QAction(toolbarIcon(QLatin1String(texts.picture)), QLatin1String(texts.caption), this);
        action->setObjectName(QLatin1String(texts.name));
        action->setToolTip(QLatin1String(texts.toolTip));
        action->setShortcut(QKeySequence(QLatin1String(texts.shortcut)));
        connect(action, &QAction::triggered, this, [this, key = texts.key] { emit buttonClicked(key); });
        addAction(action);
        auto* button = qobject_cast<QToolButton*>(widgetForAction(action));
        button->setObjectName(action->objectName());
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleDescription(action->toolTip());
        m_buttons[static_cast<std::size_t>(texts.key)] = action;
    }
    m_picture = new QLabel(this);
    m_picture->setObjectName(QStringLiteral("imgProduct"));
    m_picture->setAccessibleName(QStringLiteral("The Teslin"));
    showProductPicture(*m_picture, kPictureSize);
    setMinimumWidth(sizeHint().width()); // a button that does not fit would hide in a menu of its own
}

void MainToolbar::resizeEvent(QResizeEvent* event)
{
    QToolBar::resizeEvent(event);
    m_picture->move(width() - kPictureSize - kPictureMargin, (height() - kPictureSize) / 2);
    // Never over a button.
    m_picture->setVisible(m_picture->x() > actionGeometry(&button(ToolbarKey::Exit)).right());
}

void MainToolbar::EnableButtons(bool enabled)
{
    if (!enabled) {
        emit aboutToDisable();
    }
    for (const ButtonTexts& texts : kButtons) {
        if (texts.key != ToolbarKey::Exit) {
            button(texts.key).setEnabled(enabled);
        }
    }
}

void MainToolbar::enableExitButton()
{
    button(ToolbarKey::Exit).setEnabled(true);
}

void MainToolbar::setExitCaption(std::string_view caption)
{
    QAction& exit = button(ToolbarKey::Exit);
    exit.setText(platform::toQString(caption));
    exit.setIcon(toolbarIcon(exitReadsExit() ? QStringLiteral("exit") : QStringLiteral("abort")));
    // Escape stops a transfer. It never ends the program.
    exit.setShortcut(exitReadsExit() ? QKeySequence() : QKeySequence(Qt::Key_Escape));
}

bool MainToolbar::exitReadsExit() const
{
    return m_buttons[static_cast<std::size_t>(ToolbarKey::Exit)]->text() == kExit;
}

} // namespace app
