// Which of the program's windows is above which: whatever is opened comes up above all that is open.

#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/QtWindowOrder.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QAction>
#include <QApplication>
#include <QTimer>

using namespace testsupport;

namespace {

// The order of windows as a window system keeps it: those that stay on top above the others, and among its like the one
// that was shown or raised last above the rest.
class Screen final : public QObject
{
public:
    Screen() { QCoreApplication::instance()->installEventFilter(this); }

    [[nodiscard]] bool isAbove(const char* upper, const char* lower) const { return place(upper) > place(lower); }
    [[nodiscard]] bool isFront(const QWidget& window) const
    {
        const QString name = window.objectName();
        return std::all_of(m_order.begin(), m_order.end(), [&](const QString& other) {
            return other == name || !isShown(other) || place(name) > place(other);
        });
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool moves = event->type() == QEvent::Show || event->type() == QEvent::ZOrderChange;
        if (moves && watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow()) {
            m_order.removeAll(watched->objectName());
            m_order << watched->objectName();
        }
        return false;
    }

private:
    static QWidget* windowNamed(const QString& name)
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == name) {
                return window;
            }
        }
        return nullptr;
    }
    static bool isShown(const QString& name)
    {
        const QWidget* const window = windowNamed(name);
        return window != nullptr && window->isVisible();
    }
    // -1 for a window that is not on the screen.
    [[nodiscard]] qsizetype place(const QString& name) const
    {
        if (!isShown(name)) {
            return -1;
        }
        return m_order.indexOf(name) + (platform::isTopmost(*windowNamed(name)) ? 1000 : 0);
    }
    [[nodiscard]] qsizetype place(const char* name) const { return place(QString::fromLatin1(name)); }

    QStringList m_order;
};

struct Desk : MainWindowFixture
{
    Desk()
    {
        order = &realOrder;
        start();
    }
    // Opens a window as the user does; those that wait do so while `then` runs.
    void open(const QByteArray& name, const std::function<void()>& then)
    {
        QTimer::singleShot(0, window.get(), then);
        if (name == "frmSummary") {
            press("KEY_SUMMARY");
        } else {
            find<QAction>(name == "frmOptions" ? "mnuOptions"
                          : name == "frmAbout" ? "mnuAbout"
                                               : "mnuEditSingle")
                ->trigger();
        }
        QCoreApplication::processEvents();
    }
    static void closeWindow(const QByteArray& name)
    {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top->objectName() == QLatin1String(name)) {
                top->hide();
            }
        }
    }

    platform::QtWindowOrder realOrder;
    Screen screen;
};

} // namespace

class StackingTest final : public QObject
{
    Q_OBJECT

private slots:
    void whatIsOpenedComesUpAboveWhatIsOpen_data()
    {
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("second");
        // The options leave no other menu entry usable, so they are never the first.
        for (const char* first : {"frmMain", "dlgSingleField", "frmAbout", "frmSummary"}) {
            for (const char* second : {"dlgSingleField", "frmAbout", "frmSummary", "frmOptions"}) {
                if (qstrcmp(first, second) != 0) {
                    QTest::addRow("%s, then %s", first, second) << QByteArray(first) << QByteArray(second);
                }
            }
        }
    }
    void whatIsOpenedComesUpAboveWhatIsOpen()
    {
        QFETCH(QByteArray, first);
        QFETCH(QByteArray, second);
        Desk desk;
        // Looked at afterwards: a window that stays open would wait for ever.
        bool aboveFirst = false;
        bool aboveMain = false;
        const auto openSecond = [&] {
            desk.open(second, [&] {
                aboveFirst = desk.screen.isAbove(second, first);
                aboveMain = desk.screen.isAbove(second, "frmMain");
                Desk::closeWindow(second);
            });
            if (first != "frmMain") {
                Desk::closeWindow(first);
            }
        };
        if (first == "frmMain") {
            openSecond();
        } else {
            desk.open(first, openSecond);
        }
        QVERIFY(aboveFirst);
        QVERIFY(aboveMain);
    }

    // Each is brought to the front by its menu entry when it is open already.
    void whatIsChosenAgainComesUpAboveWhatCameLater_data()
    {
        QTest::addColumn<QByteArray>("again");
        QTest::addColumn<QByteArray>("later");
        for (const char* again : {"dlgSingleField", "frmAbout", "frmSummary"}) {
            for (const char* later : {"dlgSingleField", "frmAbout", "frmSummary"}) {
                if (qstrcmp(again, later) != 0) {
                    QTest::addRow("%s under %s", again, later) << QByteArray(again) << QByteArray(later);
                }
            }
        }
    }
    void whatIsChosenAgainComesUpAboveWhatCameLater()
    {
        QFETCH(QByteArray, again);
        QFETCH(QByteArray, later);
        Desk desk;
        bool isAbove = false;
        desk.open(again, [&] {
            desk.open(later, [&] {
                desk.open(again, [] {});
                isAbove = desk.screen.isAbove(again, later);
                Desk::closeWindow(later);
            });
            Desk::closeWindow(again);
        });
        QVERIFY(isAbove);
    }

    void aBoxStandsAboveEverything_data()
    {
        QTest::addColumn<QByteArrayList>("open");
        QTest::newRow("main window") << QByteArrayList();
        QTest::newRow("single setting") << QByteArrayList{"dlgSingleField"};
        QTest::newRow("about") << QByteArrayList{"frmAbout"};
        QTest::newRow("summary") << QByteArrayList{"frmSummary"};
        QTest::newRow("options") << QByteArrayList{"frmOptions"};
        QTest::newRow("options over single setting") << QByteArrayList{"dlgSingleField", "frmOptions"};
        QTest::newRow("about over single setting") << QByteArrayList{"dlgSingleField", "frmAbout"};
    }
    void aBoxStandsAboveEverything()
    {
        QFETCH(QByteArrayList, open);
        for (const bool pleaseWait : {false, true}) {
            Desk desk;
            QString found;
            bool isFront = false;
            platform::QtMessageBoxes boxes(QStringLiteral("Teslin Configure"));
            const auto showBox = [&] {
                if (pleaseWait) {
                    desk.linkPanel().ShowPleaseWait();
                }
                QTimer::singleShot(0, desk.window.get(), [&] {
                    if (QWidget* const box = QApplication::activeModalWidget()) {
                        found = box->objectName();
                        isFront = desk.screen.isFront(*box);
                        box->close();
                    }
                });
                boxes.show({.text = "Sent"});
                desk.linkPanel().HidePleaseWait();
            };
            std::function<void()> story = showBox;
            for (auto name = open.rbegin(); name != open.rend(); ++name) {
                story = [&desk, name = *name, inner = story] {
                    desk.open(name, [&] {
                        inner();
                        Desk::closeWindow(name);
                    });
                };
            }
            story();
            QCOMPARE(found, "messageBox");
            QVERIFY(isFront);
        }
    }

    void pleaseWaitStandsAboveEverything()
    {
        for (const char* open : {"dlgSingleField", "frmAbout", "frmSummary", "frmOptions"}) {
            Desk desk;
            bool aboveIt = false;
            bool aboveMain = false;
            desk.open(open, [&] {
                desk.linkPanel().ShowPleaseWait();
                aboveIt = desk.screen.isAbove("frmPleaseWait", open);
                aboveMain = desk.screen.isAbove("frmPleaseWait", "frmMain");
                desk.linkPanel().HidePleaseWait();
                Desk::closeWindow(open);
            });
            QVERIFY2(aboveIt, open);
            QVERIFY2(aboveMain, open);
        }
    }
};

static const testsupport::RunnableTest<StackingTest> kRunnable;
#include "StackingTest.moc"
