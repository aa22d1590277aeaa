#include "platform/qt/QtMessageBoxes.h"

#include "platform/qt/AnsiText.h"
#include "platform/qt/FrontWindow.h"
#include "platform/qt/PathText.h"

#include <QMessageBox>

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
    const QString nameInText = toQString(toAnsi(name));
    if (const qsizetype at = text.indexOf(nameInText); at >= 0) {
        text.replace(at, nameInText.size(), name);
    }
    return text;
}

} // namespace

BoxAnswer QtMessageBoxes::show(const MessageBox& box)
{
    QMessageBox window(frontWindow());
    window.setObjectName(QStringLiteral("messageBox"));
    window.setTextFormat(Qt::PlainText);
    window.setIcon(iconOf(box.icon));
    window.setWindowTitle(box.title.empty() ? m_programTitle : toQString(box.title));
    window.setText(textOf(box));
    window.setStandardButtons(buttonsOf(box.buttons));
    window.setDefaultButton(buttonOf(box.defaultButton));
    window.setEscapeButton(buttonOf(escapeAnswerOf(box.buttons)));
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
