#include "app/mainwindow/ReadTestPage.h"

#include "app/startup/ProgramText.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/Spoken.h"

#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace app {

using platform::toAnsi;
using platform::toQString;

namespace {

constexpr char kBackspace = '\b';
constexpr char kTab = '\t';
constexpr char kEnter = '\r';

// The characters of a key. Keys held down with Alt alone are menu letters and codes that the system composes; they are
// no characters yet. Not every system has a character for the tabulator while shift is down.
QString charactersOf(const QKeyEvent& event)
{
    const bool altAlone = (event.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) == Qt::AltModifier;
    if (altAlone || event.key() == Qt::Key_Delete) {
        return {};
    }
    const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    return event.text().isEmpty() && isTab ? QString(QLatin1Char(kTab)) : event.text();
}

// What a character looks like in the box: most control characters are not seen.
QString textOf(char character)
{
    if (character == kEnter) {
        return QStringLiteral("\n");
    }
    const bool isSeen = character == kTab || static_cast<unsigned char>(character) >= ' ';
    return isSeen ? toQString({&character, 1}) : QString();
}

} // namespace

ReadTestBox::ReadTestBox(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("txtReadTest"));
    platform::setSpoken(*this, QStringLiteral("What the reader types"),
                        QStringLiteral("Swipe a card; every key goes into this box"));
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setTabChangesFocus(false);
    setUndoRedoEnabled(false);
    setLineWrapMode(WidgetWidth);
    setAcceptDrops(false); // what is dropped here is for the window
    m_showing.setSingleShot(true);
    connect(&m_showing, &QTimer::timeout, this, &ReadTestBox::showWaiting);
}

void ReadTestBox::setAnsiText(std::string_view text)
{
    m_waiting.clear();
    clear();
    appendAnsiText(text);
}

void ReadTestBox::appendAnsiText(std::string_view text)
{
    QString shown = toQString(text);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    append(shown);
}

void ReadTestBox::append(const QString& text)
{
    m_waiting += text;
    if (!m_showing.isActive()) {
        m_showing.start(0);
    }
}

void ReadTestBox::showWaiting()
{
    m_showing.stop();
    caretToEnd();
    insertPlainText(m_waiting);
    m_waiting.clear();
    ensureCursorVisible();
}

void ReadTestBox::caretToEnd()
{
    moveCursor(QTextCursor::End);
}

bool ReadTestBox::event(QEvent* event)
{
    // Whatever shortcut a key may stand for elsewhere, here it is a key of the reader.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QPlainTextEdit::event(event);
}

void ReadTestBox::keyPressEvent(QKeyEvent* event)
{
    if (const QString characters = charactersOf(*event); !characters.isEmpty()) {
        typed(characters);
    } else if ((event->modifiers() & Qt::AltModifier) == 0) {
        if (m_showing.isActive()) {
            showWaiting(); // the key may move the caret in it
        }
        QPlainTextEdit::keyPressEvent(event);
    }
    // Kept behaviour kb-all-keys:
    // A key that the box has no use for is nobody else's either: the tabs would move, or the focus.
    event->accept();
}

void ReadTestBox::inputMethodEvent(QInputMethodEvent* event)
{
    // A dead key comes as a composed text.
    typed(event->commitString());
    event->accept();
}

void ReadTestBox::contextMenuEvent(QContextMenuEvent* event)
{
    // A menu that a key has opened would take the keys that follow.
    if (event->reason() == QContextMenuEvent::Keyboard) {
        event->accept();
        return;
    }
    QPlainTextEdit::contextMenuEvent(event);
}

void ReadTestBox::typed(const QString& text)
{
    for (const char character : toAnsi(text)) {
        typeOne(character);
    }
}

void ReadTestBox::typeOne(char character)
{
    const char shown = m_keyPress ? m_keyPress(character) : character;
    if (shown == kBackspace) {
        takeBackOne();
    } else {
        append(textOf(shown));
    }
}

void ReadTestBox::takeBackOne()
{
    if (m_waiting.isEmpty()) {
        caretToEnd();
        textCursor().deletePreviousChar();
    } else {
        m_waiting.chop(1);
    }
}

ReadTestPage::ReadTestPage(QWidget* parent)
    : QWidget(parent)
{
    auto* instruction = new QLabel(toQString(readTestInstruction()), this);
    instruction->setObjectName(QStringLiteral("lblReadTest"));
    instruction->setTextFormat(Qt::PlainText);
    instruction->setWordWrap(true);
    m_box = new ReadTestBox(this);
    auto* clear = new QPushButton(QStringLiteral("Clear"), this);
    clear->setObjectName(QStringLiteral("cmdClearReadDisplay"));
    clear->setAutoDefault(false);
    platform::setSpoken(*clear, QStringLiteral("Empties the box"));
    // Clicking it must not take the keyboard from the box.
    clear->setFocusPolicy(Qt::NoFocus);
    connect(clear, &QPushButton::clicked, this, &ReadTestPage::cmdClearReadDisplay_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(instruction);
    column->addWidget(m_box, 1);
    column->addWidget(clear, 0, Qt::AlignRight);
}

void ReadTestPage::focusReadTest()
{
    if (m_box->isVisible()) {
        m_box->setFocus();
    }
}

} // namespace app
