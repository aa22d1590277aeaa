#include "app/mainwindow/LinkPanel.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QPlainTextEdit>
#include <QSignalSpy>

using namespace testsupport;
using device::Identification;

// The labels of the link above the tabs, and what the first status panel takes from them and from the comments.
class LinkLabelsTest final : public QObject
{
    Q_OBJECT

    // What another piece of the program says in the first panel.
    static void say(const MainWindowFixture& f, const char* text)
    {
        f.find<QLabel>("StatusBar1_1")->setText(QLatin1String(text));
    }

private slots:
    void theDriversCaptionAloneIsCopiedToThePanel()
    {
        MainWindowFixture f;
        f.start();
        say(f, "Sent command");
        f.linkPanel().setIdentification(Identification::Driver, ""); // empty from the beginning
        f.linkPanel().setIdentification(Identification::Firmware, "3.07");
        f.linkPanel().setIdentification(Identification::Copyright, "Teslin");
        QCOMPARE(f.textOf("StatusBar1_1"), "Sent command");
        f.linkPanel().setIdentification(Identification::Driver, " KSD ");
        QCOMPARE(f.textOf("StatusBar1_1"), " KSD ");
    }

    // A caption that stays is no change, and does not take away what the panel shows.
    void thePanelKeepsItsTextThen()
    {
        MainWindowFixture f;
        f.start();
        f.linkPanel().setIdentification(Identification::Driver, " KSD ");
        QCOMPARE(f.textOf("StatusBar1_1"), " KSD ");
        say(f, "Sent command");
        f.linkPanel().setIdentification(Identification::Driver, " KSD ");
        QCOMPARE(f.textOf("StatusBar1_1"), "Sent command");
        f.linkPanel().setIdentification(Identification::Driver, "");
        QCOMPARE(f.textOf("StatusBar1_1"), "");
    }

    void titlesComeAndGoWithTheirValues()
    {
        MainWindowFixture f;
        f.start();
        const std::vector<std::pair<const char*, const char*>> labels = {{"lblDriverLabel", "lblDriverName"},
                                                                         {"lblFirmware", "lblFirmwareValue"},
                                                                         {"lblCopyright", "lblCopyRightValue"}};
        QStringList shown;
        f.reader.onOutput = [&](int count) {
            for (const auto& [title, value] : labels) {
                if (count == 6) {
                    shown << QStringLiteral("%1 %2")
                                 .arg(f.find<QLabel>(title)->isVisible())
                                 .arg(f.find<QLabel>(value)->isVisible());
                }
            }
        };
        for (const auto& [title, value] : labels) {
            QVERIFY2(!f.find<QLabel>(title)->isVisible() && !f.find<QLabel>(value)->isVisible(), title);
        }
        f.press("KEY_RETRIEVE");
        QCOMPARE(shown, QStringList({"1 1", "1 1", "1 1"}));
        f.window->link().connection().ClearSettings();
        for (const auto& [title, value] : labels) {
            QVERIFY2(!f.find<QLabel>(title)->isVisible() && !f.find<QLabel>(value)->isVisible(), title);
        }
    }

    // A port that says it opened and did not: the driver's label tells, without the title.
    void aDriverThatDidNotOpenIsNamedAlone()
    {
        MainWindowFixture f;
        f.start();
        f.reader.staysClosed = true;
        f.press("KEY_RETRIEVE");
        QCOMPARE(f.textOf("lblDriverName"), "Device driver did not open");
        QVERIFY(f.find<QLabel>("lblDriverName")->isVisible());
        QVERIFY(!f.find<QLabel>("lblDriverLabel")->isVisible());
        QVERIFY(!f.find<QLabel>("lblFirmwareValue")->isVisible());
    }

    void typingAConfigurationCommentEmptiesThePanel()
    {
        MainWindowFixture f;
        f.start();
        say(f, "value in binary is 0000 0000");
        QTest::keyClicks(f.find<QPlainTextEdit>("txtComments_CFG"), QStringLiteral("a"));
        QCOMPARE(f.textOf("StatusBar1_1"), "");
        QVERIFY(!f.table_CFG().TableChanged);
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(app::kKeyboardLanguageTab);
        const QString shown = f.textOf("StatusBar1_1");
        QVERIFY(!shown.isEmpty());
        QTest::keyClicks(f.find<QPlainTextEdit>("txtComments_KB"), QStringLiteral("a"));
        QCOMPARE(f.textOf("StatusBar1_1"), shown);
    }
};

static const testsupport::RunnableTest<LinkLabelsTest> kRunnable;
#include "LinkLabelsTest.moc"
