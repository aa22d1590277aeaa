#include "widgets/EntryBox.h"

#include "text/AnsiText.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include <utility>

namespace widgets {

namespace {

// Keys that type a character, as against those that move, edit or leave.
bool typesCharacter(const QKeyEvent& event)
{
    const QString text = event.text();
    return !text.isEmpty() && text.at(0) >= QLatin1Char(' ') && text.at(0) != QChar(0x7F);
}

bool isControlLetter(const QKeyEvent& event)
{
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    const bool alt = event.modifiers().testFlag(Qt::AltModifier); // both together type characters: AltGr
    return control && !alt && event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
}

bool isAltKey(const QKeyEvent& event)
{
    return event.modifiers().testFlag(Qt::AltModifier) && !event.modifiers().testFlag(Qt::ControlModifier);
}

} // namespace

EntryBox::EntryBox(const QString& name, int digits, QWidget* parent)
    : QLineEdit(parent)
    , m_digits(digits)
{
    setObjectName(name);
    setAcceptDrops(false); // a file dropped on the window is for the window
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void EntryBox::setKeyFilter(KeyFilter filter)
{
    m_keyFilter = std::move(filter);
    // Composed text would not come as keys.
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

QSize EntryBox::sizeHint() const
{
    const int spare = 2; // room for the cursor and a digit too many
    QSize size = QLineEdit::minimumSizeHint();
    const int oneCharacter = fontMetrics().maxWidth();
    size.rwidth() += fontMetrics().horizontalAdvance(QLatin1Char('0')) * (m_digits + spare) - oneCharacter;
    size.setHeight(QLineEdit::sizeHint().height());
    return size.expandedTo({size.height() * 2, 0});
}

void EntryBox::keyPressEvent(QKeyEvent* event)
{
    if (!m_keyFilter) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (isAltKey(*event)) {
        event->ignore(); // belongs to the menus
        return;
    }
    if (isControlLetter(*event) || event->matches(QKeySequence::Paste)) {
        return;
    }
    if (!typesCharacter(*event)) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const QString text = filtered(event->text());
    if (!text.isEmpty()) {
        QKeyEvent passed(event->type(), event->key(), event->modifiers(), text, event->isAutoRepeat(),
                         static_cast<quint16>(event->count()));
        QLineEdit::keyPressEvent(&passed);
    }
}

QString EntryBox::filtered(const QString& typed) const
{
    QString kept;
    for (const QChar character : typed) {
        int KeyAscii = text::unicodeToAnsi(character.unicode());
        m_keyFilter(KeyAscii);
        if (KeyAscii != 0) {
            kept += QChar(text::ansiToUnicode(static_cast<std::uint8_t>(KeyAscii)));
        }
    }
    return kept;
}

void EntryBox::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    m_selectOnRelease = event->reason() == Qt::MouseFocusReason;
}

void EntryBox::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (m_selectOnRelease && !hasSelectedText()) {
        selectAll();
    }
    m_selectOnRelease = false;
}

} // namespace widgets
