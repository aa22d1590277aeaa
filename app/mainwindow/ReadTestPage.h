#pragma once

#include "device/ReadTestDisplay.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <string_view>

namespace app {

// The text box of the read test. While it has the keyboard, every key of the reader belongs to it: no shortcut, menu
// letter or change of focus takes one away. A reader types faster than a long line can be laid out after every key, so
// what comes in one go is put on screen in one go, on the next pass of the event loop.
class ReadTestBox final : public QPlainTextEdit
{
    Q_OBJECT

public:
    // Asked for each typed character (Windows-1252) before it is shown; gives the character to show.
    using KeyPress = std::function<char(char)>;

    explicit ReadTestBox(QWidget* parent = nullptr);

    void setKeyPress(KeyPress keyPress) { m_keyPress = std::move(keyPress); }

    // Texts are Windows-1252 with CR LF line ends. The caret ends up behind the text and in view.
    void setAnsiText(std::string_view text);
    void appendAnsiText(std::string_view text);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void typed(const QString& text);
    void typeOne(char character);
    void takeBackOne();
    void append(const QString& text);
    void showWaiting();
    void caretToEnd();

    KeyPress m_keyPress;
    QString m_waiting; // follows the text that is on screen
    QTimer m_showing;
};

// The third tab: what to do, what the reader typed, and a button that clears it.
class ReadTestPage final : public QWidget, public device::ReadTestDisplay
{
    Q_OBJECT

public:
    explicit ReadTestPage(QWidget* parent = nullptr);

    [[nodiscard]] ReadTestBox& txtReadTest() { return *m_box; }

    void setReadTestText(std::string_view text) override { m_box->setAnsiText(text); }
    void appendReadTestText(std::string_view text) override { m_box->appendAnsiText(text); }
    void focusReadTest() override;
    void hideNotesButton() override { emit notesButtonHidden(); }

signals:
    void cmdClearReadDisplay_Click();
    void notesButtonHidden();

private:
    ReadTestBox* m_box = nullptr;
};

} // namespace app
