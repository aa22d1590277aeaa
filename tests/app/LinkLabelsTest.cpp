#include "app/mainwindow/IdentificationStrip.h"
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

private slots:
    void aCaptionThatStaysIsNoChange()
    {
        app::IdentificationStrip strip;
        QSignalSpy changes(&strip, &app::IdentificationStrip::lblDriverName_Change);
        strip.setCaption(Identification::Driver, "");
        QCOMPARE(changes.size(), 0); // empty from the beginning
        strip.setCaption(Identification::Driver, " KSD ");
        strip.setCaption(Identification::Driver, " KSD ");
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.first().first().toString(), " KSD ");
        strip.setCaption(Identification::Firmware, "3.07");
        strip.setCaption(Identification::Copyright, "Teslin");
        QCOMPARE(changes.size(), 1);
        strip.setCaption(Identification::Driver, "");
        QCOMPARE(changes.size(), 2);
    }

    // Nor does it take away what the panel shows.
    void thePanelKeepsItsTextThen()
    {
        MainWindowFixture f;
        f.start();
        f.window->identification().setCaption(Identification::Driver, " KSD ");
        QCOMPARE(f.textOf("StatusBar1_1"), " KSD ");
        f.window->statusPanels().setFirst(QStringLiteral("Sent command"));
        f.window->identification().setCaption(Identification::Driver, " KSD ");
        QCOMPARE(f.textOf("StatusBar1_1"), "Sent command");
        f.window->identification().setCaption(Identification::Driver, "");
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
        f.window->connection().ClearSettings();
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
        f.window->statusPanels().setFirst(QStringLiteral("value in binary is 0000 0000"));
        QTest::keyClicks(f.find<QPlainTextEdit>("txtComments_CFG"), QStringLiteral("a"));
        QCOMPARE(f.textOf("StatusBar1_1"), "");
        QVERIFY(!f.table_CFG().TableChanged);
        f.find<QTabWidget>("SSTab1")->setCurrentIndex(tables::kKeyboardLanguageTab);
        const QString shown = f.textOf("StatusBar1_1");
        QVERIFY(!shown.isEmpty());
        QTest::keyClicks(f.find<QPlainTextEdit>("txtComments_KB"), QStringLiteral("a"));
        QCOMPARE(f.textOf("StatusBar1_1"), shown);
    }
};

static const testsupport::RunnableTest<LinkLabelsTest> kRunnable;
#include "LinkLabelsTest.moc"
