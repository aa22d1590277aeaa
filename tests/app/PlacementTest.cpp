// Where the main window stands at its first start, at the next ones, and what it needs at least.

#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"
#include "widgets/NormalPlacement.h"
#include "widgets/WindowPlacement.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QToolTip>

using namespace testsupport;
using app::kConfigurationTab;
using app::kKeyboardLanguageTab;

namespace {

constexpr const char* kSection = "Select_Window_frmMain";

struct Program : MainWindowFixture
{
    void store(const char* placement, const char* state = "0")
    {
        platform::ProfileStrings file(settingsFile());
        QVERIFY(file.set(kSection, "Settings", placement));
        QVERIFY(file.set(kSection, "WindowState", state));
    }
    [[nodiscard]] std::string stored(const char* key = "Settings") const
    {
        return platform::ProfileStrings(settingsFile()).get(kSection, key);
    }
};

// Every place and size at which a window is seen.
class SeenPlaces final : public QObject
{
public:
    SeenPlaces() { QCoreApplication::instance()->installEventFilter(this); }
    QList<QRect> places;
    bool wasMaximised = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool counts = event->type() == QEvent::Paint || event->type() == QEvent::Show;
        if (counts && watched->objectName() == QLatin1String("frmMain")) {
            const auto& window = *static_cast<QWidget*>(watched);
            places << QRect(window.pos(), window.size());
            wasMaximised = wasMaximised || window.isMaximized();
        }
        return false;
    }
};

} // namespace

class PlacementTest final : public QObject
{
    Q_OBJECT

private slots:
    void aStoredPlaceComesBack_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QRect>("place");
        QTest::newRow("a small window") << QByteArray("40,30,700,500") << QRect(40, 30, 700, 500);
        QTest::newRow("blanks around the numbers") << QByteArray("100 , 80,700 ,500") << QRect(100, 80, 700, 500);
        QTest::newRow("partly beyond the right edge") << QByteArray("600,80,700,500") << QRect(600, 80, 700, 500);
        QTest::newRow("partly beyond the lower edge") << QByteArray("40,500,700,500") << QRect(40, 500, 700, 500);
    }
    void aStoredPlaceComesBack()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QRect, place);
        Program p;
        p.store(stored);
        p.start();
        QCOMPARE(QRect(p.window->pos(), p.window->size()), place);
        QVERIFY(p.window->close());
        QCOMPARE(p.stored(), QStringLiteral("%1,%2,%3,%4")
                                 .arg(place.x())
                                 .arg(place.y())
                                 .arg(place.width())
                                 .arg(place.height())
                                 .toStdString());
    }

    // The numbers are trimmed; the screen of this test is too small to show the size, so they are looked at as read.
    void theNumbersAreTrimmed()
    {
        Program p;
        p.store("100 , 80,900 ,600");
        int left = 0, top = 0, width = 0, height = 0, state = -1;
        bool found = false;
        widgets::LoadWindowPlacement(platform::ProfileStrings(p.settingsFile()), QStringLiteral("frmMain"), left, top,
                                     width, height, state, found);
        QVERIFY(found);
        QCOMPARE(QRect(left, top, width, height), QRect(100, 80, 900, 600));
        QCOMPARE(state, 0);
    }

    void aPlacementWithoutAHeightIsNone()
    {
        Program p;
        p.start();
        const QSize designed = p.window->size();
        p.store("40,30,700");
        p.start();
        QCOMPARE(p.window->size(), designed);
    }

    void theTitleBarIsNeverOutOfTheScreen_data()
    {
        QTest::addColumn<QByteArray>("stored");
        for (const char* stored : {"40,-300,700,500", "40,5000,700,500", "5000,40,700,500", "-5000,40,700,500"}) {
            QTest::newRow(stored) << QByteArray(stored);
        }
    }
    void theTitleBarIsNeverOutOfTheScreen()
    {
        QFETCH(QByteArray, stored);
        Program p;
        p.store(stored);
        p.start();
        QVERIFY(p.window->screen()->availableGeometry().contains(p.window->frameGeometry()));
        QCOMPARE(p.window->size(), QSize(700, 500));
    }

    // Whatever state is stored, and wherever: no flash of the window elsewhere.
    void itIsSeenAtItsPlaceAndInItsNormalStateOnly_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::newRow("normal") << QByteArray("0");
        QTest::newRow("minimised") << QByteArray("1");
        QTest::newRow("maximised") << QByteArray("2");
    }
    void itIsSeenAtItsPlaceAndInItsNormalStateOnly()
    {
        QFETCH(QByteArray, state);
        Program p;
        p.store("40,30,700,500", state);
        const SeenPlaces seen;
        p.start();
        QCoreApplication::processEvents();
        QVERIFY(!seen.places.isEmpty());
        for (const QRect& place : seen.places) {
            QCOMPARE(place, QRect(40, 30, 700, 500));
        }
        QVERIFY(!seen.wasMaximised);
        QVERIFY(!p.window->isMaximized() && !p.window->isMinimized());
    }

    // As where the desktop's settings open every window maximised.
    void itIsPutIntoTheNormalState()
    {
        class Maximiser final : public QObject
        {
            bool eventFilter(QObject* watched, QEvent* event) override
            {
                if (event->type() == QEvent::Show && watched->objectName() == QLatin1String("frmMain")) {
                    static_cast<QWidget*>(watched)->setWindowState(Qt::WindowMaximized);
                }
                return false;
            }
        } maximiser;
        QCoreApplication::instance()->installEventFilter(&maximiser);
        Program p;
        p.store("40,30,700,500");
        p.start();
        QVERIFY(!p.window->isMaximized());
    }

    void aFullScreenWindowKeepsItsNormalPlacement()
    {
        Program p;
        p.store("40,30,700,500");
        p.start();
        p.window->showFullScreen();
        QTRY_VERIFY(p.window->isFullScreen());
        QTRY_COMPARE(p.window->size(), p.window->screen()->size());
        QVERIFY(p.window->close());
        QCOMPARE(p.stored(), "40,30,700,500");
        QCOMPARE(p.stored("WindowState"), "0");
    }

    // Before it has stood still for a moment, and with nothing stored.
    void aWindowMaximisedAtOnceKeepsItsNormalPlaceAndSize()
    {
        Program p;
        p.start();
        const QRect place(p.window->pos(), p.window->size());
        p.window->showMaximized();
        QTRY_VERIFY(p.window->isMaximized());
        QTRY_COMPARE(p.window->frameGeometry().size(), p.window->screen()->availableGeometry().size());
        QVERIFY(p.window->close());
        QCOMPARE(p.stored(), QStringLiteral("%1,%2,%3,%4")
                                 .arg(place.x())
                                 .arg(place.y())
                                 .arg(place.width())
                                 .arg(place.height())
                                 .toStdString());
        QCOMPARE(p.stored("WindowState"), "2");
    }

    void theFirstPlaceHasRoomForTheFrame()
    {
        Program p;
        p.start();
        const QRect available = p.window->screen()->availableGeometry();
        QVERIFY(p.window->frameGeometry() != p.window->geometry()); // or nothing is tested here
        QVERIFY(available.contains(p.window->frameGeometry()));
    }

    void aWindowThatStandsOutIsFittedOntoItsScreen()
    {
        QWidget window;
        window.show();
        const QRect available = window.screen()->availableGeometry();
        window.setGeometry(available.translated(30, 40));
        widgets::fitOntoScreen(window);
        QVERIFY(available.contains(window.frameGeometry()));
        window.resize(200, 100);
        window.move(70, 80);
        widgets::fitOntoScreen(window);
        QCOMPARE(QRect(window.pos(), window.size()), QRect(70, 80, 200, 100)); // one that does not is left alone
    }

    // A screen of 800x600 with a panel and a frame; 1366x768 at 125 % is 1092x614.
    void itFitsTheSmallestScreens()
    {
        Program p;
        p.start();
        p.linkPanel().setIdentification(device::Identification::Driver, std::string(300, 'x'));
        p.linkPanel().showIdentification(device::Identification::Driver, device::Shown::WithTitle);
        for (const int tab : {0, 1, 2}) {
            p.find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
            const QSize least = p.window->minimumSizeHint();
            QVERIFY2(least.width() <= 780 && least.height() <= 530,
                     qPrintable(QStringLiteral("%1: %2 x %3").arg(tab).arg(least.width()).arg(least.height())));
        }
    }

    // What is cut is told whole by a tool tip, and only that.
    void anElidedLabelTellsItsTextInATip()
    {
        Program p;
        p.start();
        const std::string deep = "/" + std::string(400, 'x') + "/shop.tlc";
        for (const std::string& name : {std::string("/shop.tlc"), deep}) {
            p.rememberFile(kConfigurationTab, name);
            auto* const label = p.find<QLabel>("lblFilename");
            QCoreApplication::processEvents();
            QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), label->mapToGlobal(QPoint(5, 5)));
            QCoreApplication::sendEvent(label, &asked);
            QCOMPARE(QToolTip::isVisible() ? QToolTip::text() : QString(),
                     name == deep ? QString::fromStdString(deep) : QString());
        }
        QToolTip::hideText();
    }

    void inASmallWindowTheEditorScrolls_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("row");
        QTest::addColumn<QByteArray>("last"); // control of that row
        QTest::newRow("track enables") << int{kConfigurationTab} << 2 << QByteArray("radID_1");
        QTest::newRow("send flags") << int{kConfigurationTab} << 3 << QByteArray("radSendEr_1");
        QTest::newRow("keyboard flags") << int{kKeyboardLanguageTab} << 1 << QByteArray("radP080S_KB_1");
        QTest::newRow("identification") << int{kKeyboardLanguageTab} << 2 << QByteArray("txtHexEntry2_KB");
        QTest::newRow("pair") << int{kKeyboardLanguageTab} << 3 << QByteArray("radShiftA4_KB_1");
    }
    void inASmallWindowTheEditorScrolls()
    {
        QFETCH(int, tab);
        QFETCH(int, row);
        QFETCH(QByteArray, last);
        Program p;
        p.start();
        p.window->resize(p.window->minimumSizeHint());
        p.find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
        auto* const grid = p.find<tables::ParamGrid>(tab == 0 ? "grdCFG" : "grdKB");
        grid->setRow(row);
        QCoreApplication::processEvents();
        auto* const control = p.find<QWidget>(last.constData());
        QVERIFY(control->isVisible());
        QWidget* pane = control;
        while (qobject_cast<QScrollArea*>(pane) == nullptr) {
            pane = pane->parentWidget();
            QVERIFY(pane != nullptr);
        }
        auto* const area = qobject_cast<QScrollArea*>(pane);
        area->ensureWidgetVisible(control, 0, 0);
        const QRect inView(control->mapTo(area->viewport(), QPoint()), control->size());
        QVERIFY(area->viewport()->rect().contains(inView));
        // Another row begins at its top.
        grid->setRow(row + 1);
        QCOMPARE(area->verticalScrollBar()->value(), 0);
        QCOMPARE(area->focusPolicy(), Qt::NoFocus);
    }

    void asDesignedNoEditorScrolls()
    {
        Program p;
        p.start();
        const QRect available = p.window->screen()->availableGeometry();
        p.window->resize(std::max(1000, available.width()), p.window->sizeHint().height());
        for (const int tab : {0, 1}) {
            p.find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
            QCoreApplication::processEvents();
            for (const auto* area : p.window->findChildren<QScrollArea*>()) {
                if (area->isVisible()) {
                    QVERIFY(!area->verticalScrollBar()->isVisible());
                    QVERIFY2(!area->horizontalScrollBar()->isVisible(),
                             qPrintable(QStringLiteral("%1 of %2, tab %3")
                                            .arg(area->sizeHint().width())
                                            .arg(area->parentWidget()->width())
                                            .arg(tab)));
                }
            }
        }
    }
};

static const testsupport::RunnableTest<PlacementTest> kRunnable;
#include "PlacementTest.moc"
