// Whether the window manager itself has a window above all others.

#include "platform/qt/QtWindowOrder.h"
#include "platform/windows/Windows.h"
#include "tests/support/RunnableTest.h"

#include <QDialog>
#include <QTest>

using namespace platform;

namespace {

bool isAboveAllOthers(const QWidget& window)
{
    const auto handle = reinterpret_cast<HWND>(window.winId());
    return (::GetWindowLongPtrW(handle, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

} // namespace

class TopmostTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCOMPARE(QGuiApplication::platformName(), "windows"); }

    void aWindowGoesAboveAllOthersAndBack()
    {
        QDialog window;
        window.setGeometry(40, 60, 300, 200);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QRect place = window.geometry();
        QVERIFY(!isAboveAllOthers(window));
        QtWindowOrder order;
        order.SetWindowPos(window, kTopmost, kKeepSizeAndPlace);
        QVERIFY(isAboveAllOthers(window));
        order.SetWindowPos(window, kTopOfOrdinaryWindows, kKeepSizeAndPlace);
        order.SetWindowPos(window, kNotTopmost, kKeepSizeAndPlace);
        QVERIFY(!isAboveAllOthers(window));
        QVERIFY(window.isVisible());
        QCOMPARE(window.geometry(), place);
    }

    void aHiddenWindowIsAboveAllOthersWhenItIsShown()
    {
        QDialog window;
        QtWindowOrder order;
        order.SetWindowPos(window, kTopmost, kKeepSizeAndPlace);
        QVERIFY(!window.isVisible());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(isAboveAllOthers(window));
    }
};

static const testsupport::RunnableTest<TopmostTest> kRunnable;
#include "TopmostTest.moc"
