#include "platform/qt/QtMessageBoxes.h"

#include "platform/FileNameText.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/FrontWindow.h"
#include "platform/qt/PathText.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QScreen>

#include <algorithm>

namespace platform {

namespace {

QMessageBox::Icon iconOf(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton buttonOf(BoxAnswer answer)
{
    switch (answer) {
    case BoxAnswer::Yes:
        return QMessageBox::Yes;
    case BoxAnswer::No:
        return QMessageBox::No;
    case BoxAnswer::Cancel:
        return QMessageBox::Cancel;
    case BoxAnswer::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButtons buttonsOf(BoxButtons buttons)
{
    switch (buttons) {
    case BoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case BoxButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case BoxButtons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

BoxAnswer escapeAnswerOf(BoxButtons buttons)
{
    switch (buttons) {
    case BoxButtons::YesNo:
        return BoxAnswer::No;
    case BoxButtons::YesNoCancel:
        return BoxAnswer::Cancel;
    case BoxButtons::Ok:
        break;
    }
    return BoxAnswer::Ok;
}

QString textOf(const MessageBox& box)
{
    QString text = toQString(box.text);
    const QString name = pathText(box.file);
    const QString nameInText = toQString(fileNameText(box.file));
    if (const qsizetype at = text.indexOf(nameInText); at >= 0) {
        text.replace(at, nameInText.size(), name);
    }
    return text;
}

// A box that is as wide as its lines and its title need, as far as the screen has room: a text's lines are given, and
// notes with indents cannot be read when they are broken again.
class WholeLinesBox final : public QMessageBox
{
public:
    using QMessageBox::QMessageBox;

protected:
    void showEvent(QShowEvent* event) override
    {
        QMessageBox::showEvent(event);
        fit();
    }
    bool event(QEvent* event) override
    {
        const bool handled = QMessageBox::event(event);
        if (event->type() == QEvent::LayoutRequest && isVisible()) {
            fit();
        }
        return handled;
    }

private:
    void fit();
};

void WholeLinesBox::fit()
{
    auto* const label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (label == nullptr) {
        return;
    }
    QFont titleFont = font();
    titleFont.setBold(true);
    const QFontMetrics metrics(titleFont);
    const int roomForButtons = 8 * metrics.height(); // of the title bar, at both its ends
    const int titleWidth = metrics.horizontalAdvance(windowTitle()) + roomForButtons;
    const int room = screen()->availableGeometry().width() - 2 * metrics.height();
    label->setWordWrap(false);
    layout()->invalidate();
    const int wanted = std::max(layout()->totalMinimumSize().width(), titleWidth);
    label->setWordWrap(wanted > room);
    layout()->invalidate();
    const int width = std::min(wanted, room);
    const int height =
        layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : layout()->totalMinimumSize().height();
    setFixedSize(width, height);
    QCoreApplication::removePostedEvents(this, QEvent::LayoutRequest); // its own
}

} // namespace

BoxAnswer QtMessageBoxes::show(const MessageBox& box)
{
    WholeLinesBox window(frontWindow());
    comeUpAboveParent(window);
    window.setObjectName(QStringLiteral("messageBox"));
    window.setTextFormat(Qt::PlainText);
    window.setIcon(iconOf(box.icon));
    window.setWindowTitle(box.title.empty() ? m_programTitle : toQString(box.title));
    window.setText(textOf(box));
    window.setStandardButtons(buttonsOf(box.buttons));
    window.setDefaultButton(buttonOf(box.defaultButton));
    window.setEscapeButton(buttonOf(escapeAnswerOf(box.buttons)));
    for (QAbstractButton* button : window.buttons()) {
        button->setIcon({}); // a style has pictures for some of them only
    }
    switch (window.exec()) {
    case QMessageBox::Yes:
        return BoxAnswer::Yes;
    case QMessageBox::No:
        return BoxAnswer::No;
    case QMessageBox::Cancel:
        return BoxAnswer::Cancel;
    default:
        return escapeAnswerOf(box.buttons);
    }
}

} // namespace platform
