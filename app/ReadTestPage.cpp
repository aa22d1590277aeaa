#include "app/ReadTestPage.h"

#include "app/ProgramText.h"
#include "platform/qt/AnsiText.h"

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

// Keys held down with Alt alone are menu letters and codes that the system composes; they are no characters yet.
bool isCharacter(const QKeyEvent& event)
{
    const bool altAlone = (event.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) == Qt::AltModifier;
    return !event.text().isEmpty() && event.key() != Qt::Key_Delete && !altAlone;
}

} // namespace

ReadTestBox::ReadTestBox(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("txtReadTest"));
    setAccessibleName(tr("What the reader types"));
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setTabChangesFocus(false);
    setUndoRedoEnabled(false);
    setLineWrapMode(WidgetWidth);
}

void ReadTestBox::setAnsiText(std::string_view text)
{
    clear();
    appendAnsiText(text);
}

void ReadTestBox::appendAnsiText(std::string_view text)
{
    caretToEnd();
    QString shown = toQString(text);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    insertPlainText(shown);
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
    if (isCharacter(*event)) {
        typed(event->text());
        event->accept();
    } else if ((event->modifiers() & Qt::AltModifier) != 0) {
        event->accept();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void ReadTestBox::inputMethodEvent(QInputMethodEvent* event)
{
    // A dead key comes as a composed text.
    typed(event->commitString());
    event->accept();
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
    caretToEnd();
    if (shown == kBackspace) {
        textCursor().deletePreviousChar();
    } else if (shown == kEnter) {
        insertPlainText(QStringLiteral("\n"));
    } else if (shown == kTab || static_cast<unsigned char>(shown) >= ' ') {
        insertPlainText(toQString({&shown, 1}));
    }
    ensureCursorVisible();
}

ReadTestPage::ReadTestPage(QWidget* parent)
    : QWidget(parent)
{
    auto* instruction = new QLabel(toQString(readTestInstruction()), this);
    instruction->setObjectName(QStringLiteral("lblReadTest"));
    instruction->setTextFormat(Qt::PlainText);
    instruction->setWordWrap(true);
    m_box = new ReadTestBox(this);
    auto* clear = new QPushButton(tr("Clear"), this);
    clear->setObjectName(QStringLiteral("cmdClearReadDisplay"));
    clear->setAutoDefault(false);
    // Clicking it must not take the keyboard from the box.
    clear->setFocusPolicy(Qt::NoFocus);
    connect(clear, &QPushButton::clicked, this, &ReadTestPage::cmdClearReadDisplay_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(instruction);
    column->addWidget(m_box, 1);
    column->addWidget(clear, 0, Qt::AlignRight);
}

} // namespace app
