#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QSignalSpy>
#include <QTabBar>

using namespace testsupport;
using app::kConfigurationTab;
using app::kReadTestTab;

namespace {

// Looks at the main window in the moment in which it is shown first.
class FirstShow final : public QObject
{
public:
    explicit FirstShow(std::function<void(app::frmMain&)> look)
        : m_look(std::move(look))
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* const window = qobject_cast<app::frmMain*>(watched);
        if (window != nullptr && event->type() == QEvent::Show && !m_seen) {
            m_seen = true;
            m_look(*window);
        }
        return false;
    }

private:
    std::function<void(app::frmMain&)> m_look;
    bool m_seen = false;
};

} // namespace

// The order of the steps of the start-up, and what they are not.
class StartUpStepsTest final : public QObject
{
    Q_OBJECT

private slots:
    void settingsAreReadBeforeTheWindowIsShown()
    {
        MainWindowFixture f;
        platform::ProfileStrings settings(f.settingsFile());
        QVERIFY(settings.set("Name", "Friendly Name", "Teslin2"));
        QVERIFY(settings.set("Port", "Virtual Port", "COM12"));
        std::string name;
        std::string port;
        int rows = -1;
        const FirstShow atFirst([&](app::frmMain& window) {
            name = window.link().state().DriverFriendlyName;
            port = window.link().virtualPort().portText();
            rows = window.paramTables().CFG.table().NumParms;
        });
        f.start();
        QCOMPARE(name, "Teslin2");
        QCOMPARE(port, "COM12");
        QCOMPARE(rows, 0); // the tables come afterwards
    }

    // Moving between the tabs only names the table to build.
    void buildingTheTablesIsNoVisitOfTheirTabs()
    {
        MainWindowFixture f;
        int visits = 0;
        const FirstShow atFirst([&](app::frmMain& window) {
            connect(window.findChild<QTabWidget*>(QStringLiteral("SSTab1")), &QTabWidget::currentChanged, &window,
                    [&visits] { ++visits; });
        });
        f.start();
        QCOMPARE(visits, 0);
        QCOMPARE(int{f.table_KB().NumParms}, 75);
        QCOMPARE(f.tabInEffect(), int{kConfigurationTab});
    }

    // Every wait is counted in its ticks.
    void theTimerIsPrecise()
    {
        MainWindowFixture f;
        f.tickMilliseconds = 50;
        f.start();
        const auto* timer = f.find<QTimer>("Timer1");
        QVERIFY(timer != nullptr && timer->isActive());
        QCOMPARE(timer->interval(), 50);
        QCOMPARE(timer->timerType(), Qt::PreciseTimer);
    }

    void theWheelOverTheTabsMovesNothing()
    {
        MainWindowFixture f;
        f.start();
        auto* bar = f.find<QTabWidget>("SSTab1")->tabBar();
        for (const QPoint turn : {QPoint(0, -120), QPoint(0, -480), QPoint(-120, 0), QPoint(0, 120)}) {
            const QPoint middle = bar->rect().center();
            QWheelEvent wheel(middle, bar->mapToGlobal(middle), {}, turn, Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(bar, &wheel);
            QCOMPARE(f.find<QTabWidget>("SSTab1")->currentIndex(), 0);
        }
        QVERIFY(f.reader.commands.isEmpty());
    }

    // The press does nothing else there.
    void aPressInTheReadTestTakesTheAbortBack()
    {
        MainWindowFixture f;
        f.start();
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(kReadTestTab);
        f.window->link().state().UserAbort = true;
        f.window->Toolbar1_ButtonClick(app::ToolbarKey::Save);
        QVERIFY(!f.window->link().state().UserAbort);
        QVERIFY(f.dialogs.shown.empty());
    }
};

static const testsupport::RunnableTest<StartUpStepsTest> kRunnable;
#include "StartUpStepsTest.moc"
