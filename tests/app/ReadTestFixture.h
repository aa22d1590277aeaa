#pragma once

#include "tests/support/MainWindowFixture.h"
#include "tests/support/SourceFile.h"

#include <QFile>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <functional>

namespace testsupport {

// The real main window and a reader that types. Ticks pass only while the program waits for them, and where the test
// says so: no pause comes between two keys because the machine is slow.
class ReadTestFixture
{
public:
    ReadTestFixture()
    {
        f.tickMilliseconds = 0;
        m_hasLayouts = QFile::copy(testsupport::sourceFile(QStringLiteral("files/Languages.txt")),
                                   f.folder.filePath(QStringLiteral("Languages.txt")));
        QObject::connect(&m_ticks, &QTimer::timeout, &m_ticks, [this] { f.window->Timer1_Timer(); });
    }

    // True when the window has come up and has the keyboard.
    [[nodiscard]] bool start(const char* commandLine = "")
    {
        withTicks([&] { f.start(commandLine); });
        return m_hasLayouts && activate();
    }
    [[nodiscard]] bool startInTest() { return start() && enter(); }
    [[nodiscard]] bool enter()
    {
        clickTab(app::kReadTestTab);
        f.reader.commands.clear();
        return activate() && QTest::qWaitFor([this] { return isClear(); });
    }

    void clickTab(int tab)
    {
        QTabBar* const bar = f.find<QTabWidget>("SSTab1")->tabBar();
        withTicks([&] { QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center()); });
    }
    void withTicks(const std::function<void()>& work)
    {
        m_ticks.start(1);
        work();
        m_ticks.stop();
    }
    void pass(int ticks)
    {
        for (int i = 0; i < ticks; ++i) {
            f.window->Timer1_Timer();
        }
    }
    // As long as the raw block takes.
    void pause() { pass(9); }

    // A key as the window system delivers it: to the window that has the keyboard.
    void press(int key, Qt::KeyboardModifiers modifiers, const QString& text)
    {
        QWindow* const handle = f.window->windowHandle();
        qt_handleKeyEvent(handle, QEvent::KeyPress, key, modifiers, text);
        qt_handleKeyEvent(handle, QEvent::KeyRelease, key, modifiers, text);
    }
    void type(const QString& text)
    {
        for (const QChar character : text) {
            const bool isEnter = character == QLatin1Char('\r');
            const bool isShifted = character.isUpper();
            press(isEnter ? int{Qt::Key_Return} : int{character.toUpper().unicode()},
                  isShifted ? Qt::ShiftModifier : Qt::NoModifier, character);
        }
    }

    [[nodiscard]] QPlainTextEdit& box() const { return *f.find<QPlainTextEdit>("txtReadTest"); }
    // Whether the box gets the keys of the window.
    [[nodiscard]] bool hasFocus() const { return f.window->focusWidget() == &box(); }
    [[nodiscard]] bool isClear() const { return box().toPlainText() == heading(); }
    [[nodiscard]] static QString heading()
    {
        return QStringLiteral("(spaces represented by \"\u2022\")\n===========================");
    }
    // What the box shows below its heading; the whole text when that is not there.
    [[nodiscard]] QString typed() const
    {
        const QString text = box().toPlainText();
        return text.startsWith(heading()) ? text.mid(heading().size()) : text;
    }

    MainWindowFixture f;

private:
    // The test's window system gives the keyboard to every window that opens, the please-wait included, and does not
    // give it back.
    [[nodiscard]] bool activate()
    {
        f.window->activateWindow();
        return QTest::qWaitForWindowActive(f.window.get());
    }

    QTimer m_ticks;
    bool m_hasLayouts = false;
};

} // namespace testsupport
