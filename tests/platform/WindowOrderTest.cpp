// Windows above all others, and the window that a box belongs to.

#include "platform/qt/FrontWindow.h"
#include "platform/qt/QtWindowOrder.h"
#include "tests/support/RunnableTest.h"

#include <QApplication>
#include <QDialog>
#include <QTest>

using platform::frontWindow;
using platform::isTopmost;
using platform::kKeepSizeAndPlace;
using platform::kNotTopmost;
using platform::kTopmost;
using platform::kTopOfOrdinaryWindows;

class WindowOrderTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(kTopOfOrdinaryWindows, 0);
        QCOMPARE(kTopmost, -1);
        QCOMPARE(kNotTopmost, -2);
        QCOMPARE(kKeepSizeAndPlace, 3U);
    }

    void aHiddenWindowIsPutOnTopWithoutBeingShown()
    {
        QWidget window;
        m_order.SetWindowPos(window, kTopmost, kKeepSizeAndPlace);
        QVERIFY(!window.isVisible());
        QVERIFY(isTopmost(window));
#ifndef Q_OS_WIN
        QVERIFY(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
#endif
    }

    void aVisibleWindowKeepsItsPlaceAndSizeAndStaysVisible_data()
    {
        QTest::addColumn<int>("insertAfter");
        QTest::addColumn<bool>("topmost");
        QTest::newRow("topmost") << kTopmost << true;
        QTest::newRow("not topmost") << kNotTopmost << false;
    }
    void aVisibleWindowKeepsItsPlaceAndSizeAndStaysVisible()
    {
        QFETCH(int, insertAfter);
        QFETCH(bool, topmost);
        QDialog window;
        m_order.SetWindowPos(window, topmost ? kNotTopmost : kTopmost, kKeepSizeAndPlace);
        window.setGeometry(40, 50, 300, 200);
        window.show();
        m_order.SetWindowPos(window, insertAfter, kKeepSizeAndPlace);
        QVERIFY(window.isVisible());
        QCOMPARE(window.geometry(), QRect(40, 50, 300, 200));
        QCOMPARE(isTopmost(window), topmost);
#ifndef Q_OS_WIN
        QCOMPARE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint), topmost);
#endif
    }

    void theTopOfTheOrdinaryWindowsTakesNothingAway()
    {
        QDialog window;
        m_order.SetWindowPos(window, kTopmost, kKeepSizeAndPlace);
        window.show();
        m_order.SetWindowPos(window, kTopOfOrdinaryWindows, kKeepSizeAndPlace);
        QVERIFY(window.isVisible());
        QVERIFY(isTopmost(window));
        QWidget ordinary;
        m_order.SetWindowPos(ordinary, kTopOfOrdinaryWindows, kKeepSizeAndPlace);
        QVERIFY(!isTopmost(ordinary));
        QVERIFY(!ordinary.isVisible());
    }

    void aBoxBelongsToTheWindowThatWouldCoverIt()
    {
        QVERIFY(frontWindow() == nullptr);
        QWidget main;
        main.show();
        main.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&main));
        QCOMPARE(frontWindow(), &main);
        QDialog modal(&main);
        modal.setModal(true);
        modal.show();
        QCOMPARE(frontWindow(), &modal);
        QDialog onTop(&main);
        m_order.SetWindowPos(onTop, kTopmost, kKeepSizeAndPlace);
        QCOMPARE(frontWindow(), &modal); // not while it is hidden
        onTop.show();
        QCOMPARE(frontWindow(), &onTop);
        m_order.SetWindowPos(onTop, kNotTopmost, kKeepSizeAndPlace);
        QVERIFY(frontWindow() == &modal);
    }

    // The splash does not take the focus, so no window of the program is active while it stands alone.
    void aBoxBelongsToTheSplashWhileThereIsNothingElse()
    {
        QWidget splash(nullptr, Qt::SplashScreen);
        splash.setAttribute(Qt::WA_ShowWithoutActivating);
        QWidget tip(nullptr, Qt::ToolTip);
        tip.show();
        QVERIFY(frontWindow() == nullptr);
        splash.show();
        QApplication::setActiveWindow(nullptr); // the test's window system activates every window
        QVERIFY(QApplication::activeWindow() == nullptr);
        QCOMPARE(frontWindow(), &splash);
    }

private:
    platform::QtWindowOrder m_order;
};

static const testsupport::RunnableTest<WindowOrderTest> kRunnable;
#include "WindowOrderTest.moc"
