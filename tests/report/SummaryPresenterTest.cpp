#include "report/ui/SummaryPresenter.h"
#include "tests/report/GoldenReport.h"
#include "tests/report/ScriptedTable.h"
#include "tests/report/SummaryBench.h"
#include "tests/support/RunnableTest.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QScopeGuard>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <functional>

using report::Summary;
using report::SummaryBox;
using report::SummaryFacts;
using report::SummaryPresenter;
using summarybench::Bench;

namespace {

const SummaryFacts kFacts{.date = std::chrono::year(2024) / 3 / 7};

report::frmSummary* shownWindow()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* window = qobject_cast<report::frmSummary*>(widget);
        if (window != nullptr && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

QByteArray shownText()
{
    return QByteArray::fromStdString(shownWindow()->findChild<SummaryBox*>()->text());
}

// Runs as soon as the event loop does, which is while the summary is open.
template <typename Action>
void meanwhile(Action action)
{
    QTimer::singleShot(0, qApp, action);
}

report::TableAccess defaults_CFG()
{
    return scripted::configurationTable(scripted::defaults_CFG());
}

report::TableAccess defaults_KB()
{
    return scripted::keyboardTable(scripted::defaults_KB());
}

} // namespace

class SummaryPresenterTest final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY(shownWindow() == nullptr); }

    void showsTheReportUntilItIsClosed_data()
    {
        QTest::addColumn<Summary>("summary");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QByteArray>("report");
        QTest::newRow("Configuration") << Summary::Configuration << QStringLiteral("Configuration Summary")
                                       << golden::report("configuration-defaults");
        QTest::newRow("Keyboard Language") << Summary::KeyboardLanguage << QStringLiteral("Keyboard Language Summary")
                                           << golden::report("keyboard-defaults");
    }
    void showsTheReportUntilItIsClosed()
    {
        QFETCH(Summary, summary);
        QFETCH(QString, caption);
        QFETCH(QByteArray, report);
        Bench bench;
        SummaryPresenter presenter(bench.services());
        int looks = 0;
        meanwhile([&] {
            report::frmSummary* window = shownWindow();
            QVERIFY(window != nullptr);
            const auto closing = qScopeGuard([window] { window->close(); });
            ++looks;
            QCOMPARE(window->windowTitle(), caption);
            QVERIFY(!window->isModal());
            QCOMPARE(golden::lines(shownText()), golden::lines(report));
            auto* box = window->findChild<SummaryBox*>();
            QVERIFY(box->textCursor().atEnd());
            QVERIFY(QTest::qWaitForWindowActive(window));
            QVERIFY(box->hasFocus());
            QCOMPARE(bench.printer.fonts, std::vector<std::string>{"Courier New"});
        });
        presenter.show(summary, summary == Summary::Configuration ? defaults_CFG() : defaults_KB(), kFacts);
        QCOMPARE(looks, 1);
    }

    void tellsItsFacts()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        QByteArray text;
        meanwhile([&] {
            text = shownText();
            presenter.close();
        });
        presenter.show(Summary::KeyboardLanguage, defaults_KB(),
                       {.firmwareVersion = "A1.02",
                        .comment = "a comment\r\nof two lines",
                        .date = std::chrono::year(1999) / 12 / 31});
        QVERIFY(text.startsWith("                                  Brennic Teslin A1.0212/31/1999\r\n"));
        QVERIFY(text.contains("\r\n\r\na comment\r\nof two lines\r\n     Keyboard Flags: "));
    }

    // The wait goes to sleep when there is nothing to do.
    void sleepsWhileItWaits()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        int sleeps = 0;
        QObject context;
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &context, [&] {
            if (++sleeps == 1) {
                meanwhile([&] { presenter.close(); });
            }
        });
        presenter.show(Summary::Configuration, defaults_CFG(), kFacts);
        QVERIFY(sleeps > 0);
    }

    void comesAgainWithNewValues()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        QList<QByteArray> texts;
        const auto lookAndClose = [&] {
            texts.append(shownText());
            presenter.close();
        };
        meanwhile(lookAndClose);
        presenter.show(Summary::Configuration, defaults_CFG(), kFacts);
        meanwhile(lookAndClose);
        presenter.show(Summary::Configuration,
                       scripted::configurationTable(scripted::filledWith(scripted::defaults_CFG(), "FF")), kFacts);
        QCOMPARE(texts.size(), 2);
        QCOMPARE(golden::lines(texts[0]), golden::lines(golden::report("configuration-defaults")));
        QCOMPARE(golden::lines(texts[1]), golden::lines(golden::report("configuration-all-ff")));
        QCOMPARE(bench.placements.asked.count(QStringLiteral("restore frmSummary")), 2);
    }

    // The user may press Summary again, for the other table, while the window is open.
    void isCalledAgainWhileOpen()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        QStringList told;
        meanwhile([&] {
            report::frmSummary* window = shownWindow();
            window->setWindowState(Qt::WindowMinimized);
            meanwhile([&, window] {
                const auto closing = qScopeGuard([window] { window->close(); });
                QVERIFY(shownWindow() == window);
                QVERIFY(!window->isMinimized());
                QCOMPARE(window->windowTitle(), QStringLiteral("Keyboard Language Summary"));
                QCOMPARE(golden::lines(shownText()), golden::lines(golden::report("keyboard-defaults")));
                told += QStringLiteral("close");
            });
            presenter.show(Summary::KeyboardLanguage, defaults_KB(), kFacts);
            told += QStringLiteral("inner call returns");
        });
        presenter.show(Summary::Configuration, defaults_CFG(), kFacts);
        told += QStringLiteral("outer call returns");
        QCOMPARE(told, QStringList({QStringLiteral("inner call returns"), QStringLiteral("close"),
                                    QStringLiteral("outer call returns")}));
        QCOMPARE(bench.placements.asked.count(QStringLiteral("restore frmSummary")), 1);
    }

    // However often it is called, one close ends the one wait.
    void isCalledOftenWhileOpen()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        const int levels = QThread::currentThread()->loopLevel();
        int deepest = 0;
        int left = 20;
        std::function<void()> again = [&] {
            deepest = std::max(deepest, QThread::currentThread()->loopLevel());
            if (--left == 0) {
                presenter.close();
                return;
            }
            meanwhile([&] { again(); });
            presenter.show(Summary::Configuration, defaults_CFG(), kFacts);
        };
        meanwhile([&] { again(); });
        presenter.show(Summary::Configuration, defaults_CFG(), kFacts);
        QCOMPARE(left, 0);
        QCOMPARE(deepest, levels + 1);
    }

    // Another wait that began later lies over this one and keeps it from going on.
    void isClosedAndOpenedAgainUnderAnotherWait()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        QStringList told;
        meanwhile([&] {
            QEventLoop another;
            meanwhile([&] {
                presenter.close();
                presenter.show(Summary::KeyboardLanguage, defaults_KB(), kFacts);
                told += shownWindow()->windowTitle();
                another.quit();
            });
            another.exec();
            meanwhile([&] {
                told += QStringLiteral("close");
                presenter.close();
            });
        });
        presenter.show(Summary::Configuration, defaults_CFG(), kFacts);
        told += QStringLiteral("outer call returns");
        QCOMPARE(told, QStringList({QStringLiteral("Keyboard Language Summary"), QStringLiteral("close"),
                                    QStringLiteral("outer call returns")}));
    }

    void waitsWhileMinimised()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        bool hasReturned = false;
        int turns = 0;
        meanwhile([&] {
            shownWindow()->setWindowState(Qt::WindowMinimized);
            meanwhile([&] {
                turns = hasReturned ? 0 : 1;
                presenter.close();
            });
        });
        presenter.show(Summary::Configuration, defaults_CFG(), kFacts);
        hasReturned = true;
        QCOMPARE(turns, 1);
    }

    void endsWithTheProgram()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        int returns = 0;
        meanwhile([&] {
            meanwhile([] { QApplication::quit(); });
            presenter.show(Summary::Configuration, defaults_CFG(), kFacts);
            ++returns;
        });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(returns, 1);
        presenter.close();
    }

    // Reading the table may run events.
    void isClosedWhileTheTableIsRead()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        int reads = 0;
        presenter.show(
            Summary::Configuration,
            [&](std::string_view) {
                ++reads;
                presenter.close();
                return std::string("00");
            },
            kFacts);
        QVERIFY(reads > 0);
    }

    void closingAClosedWindowDoesNothing()
    {
        Bench bench;
        SummaryPresenter presenter(bench.services());
        presenter.close();
        QCOMPARE(bench.placements.asked, QStringList());
    }
};

static const testsupport::RunnableTest<SummaryPresenterTest> kRunnable;
#include "SummaryPresenterTest.moc"
