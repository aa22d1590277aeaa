// The program while the driver's device object does not answer, and the window that stands over it meanwhile.

#include "app/dialogs/frmOptions.h"
#include "app/dialogs/frmPleaseWait.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SlowScreen.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QSignalSpy>

using namespace testsupport;
using platform::BoxAnswer;

namespace {

// What the user does comes with everything that is pending, and not with what is handled without input.
class UserPump final : public platform::EventPump
{
public:
    std::function<void()> userDoes;

    void processPending() override
    {
        if (const auto act = std::exchange(userDoes, {})) {
            act();
        }
        m_real.processPending();
    }
    void processWithoutInput() override { m_real.processWithoutInput(); }
    void waitForEvents() override
    {
        if (const auto act = std::exchange(userDoes, {})) {
            act();
        }
        m_real.waitForEvents();
    }

private:
    platform::QtEventPump m_real;
};

// Which widgets are painted.
class PaintedNames final : public QObject
{
public:
    PaintedNames() { QCoreApplication::instance()->installEventFilter(this); }
    QStringList names;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            names << watched->objectName();
        }
        return false;
    }
};

} // namespace

class PleaseWaitTest final : public QObject
{
    Q_OBJECT

private slots:
    void theWindowIsPaintedWhileTheDriverIsSilent()
    {
        MainWindowFixture f;
        f.start();
        PaintedNames painted;
        int times = 0;
        f.driver.silence = [&](const std::function<void()>& breathe) {
            for (; times < 3; ++times) {
                painted.names.clear();
                f.window->update(); // another window was over it
                breathe();
                QVERIFY(painted.names.contains("frmMain"));
            }
        };
        f.press("KEY_RETRIEVE");
        QCOMPARE(times, 3);
    }

    void everythingIsOnScreenBeforeTheWaitBegins()
    {
        MainWindowFixture f;
        f.start();
        const SlowScreen screen(SlowScreen::ShowsLater);
        bool opened = false;
        f.driver.onOpen = [&] {
            opened = true;
            for (const char* name : {"frmPleaseWait", "Label1", "KEY_RETRIEVE", "StatusBar1_1"}) {
                QVERIFY2(screen.painted().contains(QLatin1String(name)), name);
            }
            QVERIFY(!f.find<QToolButton>("KEY_RETRIEVE")->isEnabled());
        };
        f.press("KEY_UPDATE");
        QVERIFY(opened);
    }

    void theTestedButtonSaysSoBeforeTheWaitBegins()
    {
        MainWindowFixture f;
        f.start();
        f.find<QAction>("mnuOptions")->trigger();
        auto* const button = f.find<QPushButton>("btnTestName");
        QCoreApplication::processEvents();
        PaintedNames painted;
        bool opened = false;
        f.driver.onOpen = [&] {
            opened = true;
            QCOMPARE(button->text(), "testing");
            QVERIFY(painted.names.contains("btnTestName"));
            QVERIFY(painted.names.contains("cmdOK"));
        };
        f.boxes.expect(BoxAnswer::Ok);
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(opened);
    }

    void whatTheUserDoesWaitsForTheEndOfTheSilence()
    {
        MainWindowFixture f;
        UserPump pump;
        f.pump = &pump;
        f.start();
        bool didIt = false;
        f.driver.silence = [&](const std::function<void()>& breathe) {
            pump.userDoes = [&] { didIt = true; };
            breathe();
            QVERIFY(!didIt);
        };
        f.press("KEY_RETRIEVE");
        QVERIFY(didIt);
    }

    // A box stands over the window and swallows what comes from then on.
    void aWishToCloseIsHeardBeforeTheBoxAndCarriedOut_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<int>("boxes");
        QTest::newRow("no port") << QByteArray("what?\r") << 1; // the options hold a port's name: one box
        QTest::newRow("a port") << QByteArray("/get port_name=COM5\r") << 0;
    }
    void aWishToCloseIsHeardBeforeTheBoxAndCarriedOut()
    {
        QFETCH(QByteArray, answer);
        QFETCH(int, boxes);
        MainWindowFixture f;
        UserPump pump;
        f.pump = &pump;
        f.start();
        QSignalSpy unloaded(f.window.get(), &app::frmMain::unloaded);
        f.driver.answer = answer.toStdString();
        f.driver.silence = [&](const std::function<void()>& breathe) {
            pump.userDoes = [&] { f.window->close(); };
            breathe();
            QVERIFY(f.window->isVisible());
        };
        for (int box = 0; box < boxes; ++box) {
            f.boxes.expect(BoxAnswer::Ok, [&] { QVERIFY(f.window->link().operations().isClosing()); });
        }
        f.press("KEY_RETRIEVE");
        QCOMPARE(unloaded.count(), 1);
        QVERIFY(!f.window->isVisible());
    }

    // --- The window itself ---

    void nobodyButTheProgramTakesItAway()
    {
        RecordingWindowOrder order;
        QWidget main;
        main.show();
        app::frmPleaseWait wait(order, &main);
        wait.showOver(main);
        QVERIFY(wait.windowFlags().testFlag(Qt::FramelessWindowHint)); // no window manager puts buttons there
        QVERIFY(!wait.close());
        QVERIFY(wait.isVisible());
        wait.unload();
        QVERIFY(!wait.isVisible());
    }

    void itTakesTheKeyboardFromNobody()
    {
        RecordingWindowOrder order;
        QWidget main;
        app::frmPleaseWait wait(order, &main);
        QVERIFY(wait.testAttribute(Qt::WA_ShowWithoutActivating));
        QVERIFY(wait.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
        QCOMPARE(wait.focusPolicy(), Qt::NoFocus);
        for (const auto* child : wait.findChildren<QWidget*>()) {
            QCOMPARE(child->focusPolicy(), Qt::NoFocus);
        }
    }

    void itsTextIsWhole_data()
    {
        QTest::addColumn<int>("points");
        QTest::newRow("small") << 7;
        QTest::newRow("usual") << 10;
        QTest::newRow("large") << 28;
    }
    void itsTextIsWhole()
    {
        QFETCH(int, points);
        RecordingWindowOrder order;
        QWidget main;
        QFont font = main.font();
        font.setPointSize(points);
        main.show();
        app::frmPleaseWait wait(order, &main);
        auto* const label = wait.findChild<QLabel*>("Label1");
        label->setFont(font);
        wait.showOver(main);
        QCOMPARE(label->text(), "Please Wait...");
        const QSize text = label->fontMetrics().size(Qt::TextSingleLine, label->text());
        QVERIFY(label->width() >= text.width() && label->height() >= text.height());
        QVERIFY(wait.rect().contains(label->geometry()));
        wait.unload();
    }

    // A window that is not on screen now, minimised, cannot be waited for.
    void aMinimisedProgramDoesNotWaitForIt()
    {
        RecordingWindowOrder order;
        QWidget main;
        main.showMinimized();
        const SlowScreen screen(SlowScreen::ShowsNever);
        app::frmPleaseWait wait(order, &main);
        QElapsedTimer timer;
        timer.start();
        wait.showOver(main);
        QVERIFY(timer.elapsed() < 400);
        wait.unload();
    }
};

static const testsupport::RunnableTest<PleaseWaitTest> kRunnable;
#include "PleaseWaitTest.moc"
