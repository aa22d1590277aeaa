#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QGuiApplication>
#include <QScreen>

using namespace testsupport;

namespace {

constexpr const char* kSection = "Select_Window_frmMain";

QByteArray asStored(const QRect& place)
{
    return QStringLiteral("%1,%2,%3,%4")
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height())
        .toLatin1();
}

struct Program : MainWindowFixture
{
    void store(const QRect& place)
    {
        platform::ProfileStrings file(settingsFile());
        QVERIFY(file.set(kSection, "Settings", asStored(place).toStdString()));
    }
    [[nodiscard]] QByteArray stored() const
    {
        return QByteArray::fromStdString(platform::ProfileStrings(settingsFile()).get(kSection, "Settings"));
    }
    [[nodiscard]] QRect place() const { return {window->pos(), window->size()}; }
};

} // namespace

// The places of the real window on a desk of two screens: 1280 by 800, and 1920 by 1080 at its right.
class TwoScreensTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::screens().size(), 2); // as ctest sets them up
        QCOMPARE(QGuiApplication::screens().at(1)->geometry(), QRect(1280, 0, 1920, 1080));
    }

    void aStoredPlaceComesBackAndIsStoredAgain_data()
    {
        QTest::addColumn<QRect>("place");
        QTest::newRow("on the main screen") << QRect(100, 80, 900, 600);
        QTest::newRow("on the second screen") << QRect(1500, 80, 900, 600);
        QTest::newRow("below the end of the main screen") << QRect(1500, 1000, 900, 600);
        QTest::newRow("beyond the right edge") << QRect(3000, 80, 900, 600);
        QTest::newRow("across both") << QRect(900, 20, 2000, 700);
    }
    void aStoredPlaceComesBackAndIsStoredAgain()
    {
        QFETCH(QRect, place);
        Program p;
        p.store(place);
        p.start();
        QCOMPARE(p.place(), place);
        QVERIFY(p.window->close());
        QCOMPARE(p.stored(), asStored(place));
    }

    void aPlaceThatIsGoneIsBroughtOntoTheNearestScreen()
    {
        Program p;
        p.store({9000, 300, 900, 600});
        p.start();
        QCOMPARE(p.window->size(), QSize(900, 600));
        QVERIFY(QGuiApplication::screens().at(1)->availableGeometry().contains(p.window->frameGeometry()));
    }
};

static const testsupport::RunnableTest<TwoScreensTest> kRunnable;
#include "TwoScreensTest.moc"
