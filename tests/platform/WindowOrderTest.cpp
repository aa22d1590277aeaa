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

    // It goes when a box comes, and would take the box with it.
    void aBoxNeverBelongsToTheSplash()
    {
        QWidget splash(nullptr, Qt::SplashScreen);
        splash.setAttribute(Qt::WA_ShowWithoutActivating);
        QWidget tip(nullptr, Qt::ToolTip);
        tip.show();
        QVERIFY(frontWindow() == nullptr);
        splash.show();
        splash.activateWindow(); // the test's window system activates every window
        QVERIFY(frontWindow() == nullptr);
    }

    // Of several windows on top, the one that the user works in; else the one that came last.
    void aBoxBelongsToTheFrontOneOfSeveralOnTop()
    {
        QDialog first;
        m_order.SetWindowPos(first, kTopmost, kKeepSizeAndPlace);
        first.show();
        QWidget second(nullptr, Qt::Tool);
        m_order.SetWindowPos(second, kTopmost, kKeepSizeAndPlace);
        second.show();
        QWidget ordinary;
        ordinary.show();
        ordinary.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&ordinary));
        QCOMPARE(frontWindow(), &second);
        first.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&first));
        QCOMPARE(frontWindow(), &first);
        QDialog modal;
        m_order.SetWindowPos(modal, kTopmost, kKeepSizeAndPlace);
        modal.setModal(true);
        modal.show();
        first.activateWindow();
        QCOMPARE(frontWindow(), &modal);
    }

    void aBoxComesUpAboveAParentThatStaysOnTop()
    {
        QDialog ordinary;
        QDialog box(&ordinary);
        platform::comeUpAboveParent(box);
        QVERIFY(!isTopmost(box));
        QDialog onTop;
        m_order.SetWindowPos(onTop, kTopmost, kKeepSizeAndPlace);
        QDialog other(&onTop);
        platform::comeUpAboveParent(other);
        QVERIFY(isTopmost(other));
        QCOMPARE(other.windowType(), Qt::Dialog);
        QDialog orphan;
        platform::comeUpAboveParent(orphan);
        QVERIFY(!isTopmost(orphan));
    }

    void aWindowComesUpAboveOneThatStaysOnTop()
    {
        QDialog onTop;
        m_order.SetWindowPos(onTop, kTopmost, kKeepSizeAndPlace);
        QDialog opened;
        platform::showInFront(opened, m_order);
        QVERIFY(opened.isVisible());
        QVERIFY(!isTopmost(opened)); // the other one is hidden
        onTop.show();
        platform::showInFront(opened, m_order); // it was open already
        QVERIFY(opened.isVisible());
        QVERIFY(isTopmost(opened));
        opened.hide();
        onTop.hide();
        platform::showInFront(opened, m_order);
        QVERIFY(!isTopmost(opened)); // nobody need be above the windows of other programs any more
    }

private:
    platform::QtWindowOrder m_order;
};

static const testsupport::RunnableTest<WindowOrderTest> kRunnable;
#include "WindowOrderTest.moc"
