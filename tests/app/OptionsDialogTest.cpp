// The options: what they show and change, both tests, and what OK and Cancel keep.

#include "app/dialogs/frmOptions.h"
#include "tests/device/ReaderScript.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RecordingWindowOrder.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QLabel>
#include <QTest>

using namespace testsupport;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

namespace {

// The options over a link of their own, with a driver that names COM12.
struct Options : DeviceLink
{
    Options()
    {
        driver.answer = "/get port_name=COM12\r";
        port.setScript(reader::Script());
        window.show();
    }

    void open()
    {
        dialog.showInFront();
        if (!QTest::qWaitForWindowActive(&dialog)) {
            qFatal("the dialog did not become active");
        }
    }
    [[nodiscard]] QLineEdit* box(const char* name) { return dialog.findChild<QLineEdit*>(QLatin1String(name)); }
    [[nodiscard]] QPushButton* button(const char* name) { return dialog.findChild<QPushButton*>(QLatin1String(name)); }
    [[nodiscard]] QScrollBar* bar() { return dialog.findChild<QScrollBar*>(QStringLiteral("sclComPort")); }
    void click(const char* name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    [[nodiscard]] QString portText() { return box("txtComPort")->text(); }

    // Each box is a plain notice under the program's title.
    [[nodiscard]] QStringList boxTexts() const
    {
        QStringList texts;
        for (const platform::MessageBox& shown : boxes.shown) {
            texts << QString::fromLatin1(shown.text.c_str());
        }
        return texts;
    }
    void compareNotice(std::size_t index) const
    {
        QCOMPARE(boxes.shown.at(index).title, "");
        QCOMPARE(boxes.shown.at(index).icon, BoxIcon::None);
        QCOMPARE(boxes.shown.at(index).buttons, BoxButtons::Ok);
    }

    device::VirtualPort setup;
    device::DriverConnection setupConnection{link, protocol, services, surfaces, setup};
    int saved = 0;
    std::string savedPort;
    std::string savedName;
    QWidget window;
    RecordingWindowOrder order;
    app::frmOptions dialog{link,
                           operations,
                           setupConnection,
                           setup,
                           loggedBoxes,
                           order,
                           [this] {
                               ++saved;
                               savedPort = setup.portText();
                               savedName = link.DriverFriendlyName;
                           },
                           &window};
};

} // namespace

class OptionsDialogTest final : public QObject
{
    Q_OBJECT

private slots:
    void itShowsWhatItIsFor()
    {
        Options o;
        o.open();
        QCOMPARE(o.dialog.windowTitle(), "KSD Driver Setup");
        const auto* tabs = o.dialog.findChild<QTabBar*>("tbsOptions");
        QCOMPARE(tabs->count(), 1);
        QCOMPARE(tabs->tabText(0), "Enter KSD driver information");
        QCOMPARE(o.button("btnTestName")->text(), "&Test");
        QCOMPARE(o.button("btnTestPort")->text(), "&Test");
        QCOMPARE(o.button("cmdOK")->text(), "OK");
        QCOMPARE(o.button("cmdCancel")->text(), "Cancel");
        const auto* page = o.dialog.findChild<QWidget*>("picOptions");
        QVERIFY(page->isVisible());
        QCOMPARE(page->findChild<QLabel*>("lblFriendlyName")->text(), "Friendly Name:");
        QCOMPARE(page->findChild<QLabel*>("lblComPort")->text(), "Virtual Port:");
        QCOMPARE(page->findChild<QLabel*>("lblHint")->text(), "Enter either the Teslin driver's\r\n"
                                                              "\"Friendly Name\" or the Virtual  Port number.\r\n"
                                                              "The Friendly Name is usually \"Teslin\".");
        QVERIFY(o.box("txtFriendlyName")->font().fixedPitch());
        QVERIFY(o.box("txtComPort")->font().fixedPitch());
        QCOMPARE(o.dialog.windowModality(), Qt::WindowModal);
        for (const QLabel* label : o.dialog.findChildren<QLabel*>()) {
            QCOMPARE(label->textFormat(), Qt::PlainText);
        }
    }

    void itStartsInTheMiddleOfTheScreenWithTheNameReadyToBeTyped()
    {
        Options o;
        o.link.DriverFriendlyName = "Teslin2";
        o.open();
        QCOMPARE(o.box("txtFriendlyName")->text(), "Teslin2");
        QVERIFY(o.box("txtFriendlyName")->hasFocus());
        QCOMPARE(o.box("txtFriendlyName")->selectedText(), "Teslin2");
        QCOMPARE(o.portText(), "COM5");
        QCOMPARE(o.bar()->value(), 5);
        QVERIFY(o.dialog.frameGeometry() != o.dialog.geometry()); // or it is not told whose middle is meant
        const QPoint off = o.dialog.frameGeometry().center() - o.dialog.screen()->availableGeometry().center();
        QVERIFY2(off.manhattanLength() <= 2, qPrintable(QStringLiteral("%1, %2").arg(off.x()).arg(off.y())));
        QVERIFY(o.port.commands().empty());
    }

    void theBarRunsFrom1To256()
    {
        Options o;
        QCOMPARE(o.bar()->minimum(), 1);
        QCOMPARE(o.bar()->maximum(), 256);
        QCOMPARE(o.bar()->singleStep(), 1);
        QCOMPARE(o.bar()->orientation(), Qt::Horizontal);
    }

    void theBarStartsAtThePortThatIsNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("value");
        QTest::newRow("COM12") << QByteArray("COM12") << 12;
        QTest::newRow("beyond") << QByteArray("COM300") << 5; // no port has it
        QTest::newRow("with a control character") << QByteArray("COM7\r") << 7;
        QTest::newRow("no port") << QByteArray("modem") << 5;
        QTest::newRow("no number that fits") << QByteArray("COM99999") << 5;
    }
    void theBarStartsAtThePortThatIsNamed()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, value);
        Options o;
        o.setup.setPortText(text.toStdString());
        o.open();
        QCOMPARE(o.bar()->value(), value);
        QCOMPARE(o.portText(), QString::fromLatin1(text)); // the bar does not write the name
        QCOMPARE(o.setup.portText(), text.toStdString());
    }

    void theNameIsTakenAtEveryChange()
    {
        Options o;
        o.open();
        QTest::keyClicks(o.box("txtFriendlyName"), "Te");
        QCOMPARE(o.link.DriverFriendlyName, "Te");
        o.box("txtFriendlyName")->insert(QString(QChar(0xE9)));
        QCOMPARE(o.link.DriverFriendlyName, "Te\xE9");
        o.box("txtFriendlyName")->clear();
        QCOMPARE(o.link.DriverFriendlyName, "");
        QCOMPARE(o.saved, 0);
    }

    void movingTheBarNamesThePort()
    {
        Options o;
        o.open();
        o.bar()->setValue(12);
        QCOMPARE(o.portText(), "COM12");
        QCOMPARE(o.setup.portText(), "COM12");
        o.bar()->setFocus();
        QTest::keyClick(o.bar(), Qt::Key_Right);
        QCOMPARE(o.portText(), "COM13");
        QTest::keyClick(o.bar(), Qt::Key_Left);
        QTest::keyClick(o.bar(), Qt::Key_Left);
        QCOMPARE(o.portText(), "COM11");
        QTest::keyClick(o.bar(), Qt::Key_End);
        QCOMPARE(o.portText(), "COM256");
        QVERIFY(!o.port.PortOpen());
        QVERIFY(o.port.commands().empty());
        QCOMPARE(int{o.link.PortNumber}, 0);
    }

    void aTypedPortIsKeptButDoesNotMoveTheBar()
    {
        Options o;
        o.open();
        o.box("txtComPort")->setFocus();
        o.box("txtComPort")->selectAll();
        QTest::keyClicks(o.box("txtComPort"), "COM9");
        QCOMPARE(o.setup.portText(), "COM9");
        QCOMPARE(o.bar()->value(), 5);
        o.click("cmdOK");
        QCOMPARE(o.savedPort, "COM9");
    }

    // --- Test by name ---

    void testByNameFindsThePort()
    {
        Options o;
        o.open();
        QStringList seen;
        o.boxes.expect(BoxAnswer::Ok, [&] {
            seen << o.button("btnTestName")->text() << o.button("btnTestPort")->text();
            for (const char* name : {"cmdOK", "cmdCancel", "btnTestName", "btnTestPort"}) {
                seen << (o.button(name)->isEnabled() ? "on" : "off");
            }
        });
        o.click("btnTestName");
        QCOMPARE(o.boxTexts(), QStringList({"Teslin successfully opened (COM port 12 found)"}));
        o.compareNotice(0);
        QCOMPARE(seen, QStringList({"testing", "&Test", "off", "off", "off", "on"}));
        QCOMPARE(o.button("btnTestName")->text(), "&Test");
        for (const char* name : {"cmdOK", "cmdCancel", "btnTestName", "btnTestPort"}) {
            QVERIFY(o.button(name)->isEnabled());
        }
        QVERIFY(o.button("btnTestName")->hasFocus());
        QCOMPARE(int{o.link.PortNumber}, 12);
        QCOMPARE(o.bar()->value(), 12);
        QCOMPARE(o.portText(), "COM12");
        QVERIFY(!o.port.PortOpen()); // only the driver was asked
        QVERIFY(o.dialog.isVisible());
    }

    void testByNameUsesTheNameAsTyped()
    {
        Options o;
        o.open();
        QTest::keyClicks(o.box("txtFriendlyName"), "Other");
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestName");
        QVERIFY(lines(o.log).contains("driver: open \\\\.\\Other"));
        QCOMPARE(o.boxTexts(), QStringList({"Other successfully opened (COM port 12 found)"}));
    }

    void testByNameWithoutADriver()
    {
        Options o;
        o.driver.openError = platform::SystemError{.number = 2, .description = "No such file or directory"};
        o.open();
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestName");
        QCOMPARE(o.boxTexts(), QStringList({"Unable to open Teslin"}));
        o.compareNotice(0);
        QVERIFY(o.dialog.isVisible());
        QCOMPARE(o.portText(), "COM5");
        QCOMPARE(o.bar()->value(), 5);
        QCOMPARE(int{o.link.PortNumber}, 0);
        QCOMPARE(o.button("btnTestName")->text(), "&Test");
        QVERIFY(o.button("cmdOK")->isEnabled());
    }

    // The driver answers, but names no port, and neither does the box.
    void testByNameWithoutAPort()
    {
        Options o;
        o.driver.answer = "/get port_name=none\r";
        o.setup.setPortText("none");
        o.open();
        o.boxes.expect(BoxAnswer::Ok);
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestName");
        QCOMPARE(o.boxTexts(), QStringList({"Could not open Teslin port!", "Unable to open Teslin"}));
        QCOMPARE(o.boxes.shown[0].title, "Error");
        o.compareNotice(1);
    }

    // No port can have such a number, so nothing is said to be found, and Cancel has nothing to keep.
    void testByNameWithANumberThatNoPortHas_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("0") << QByteArray("/get port_name=COM0\r");
        QTest::newRow("too high") << QByteArray("/get port_name=COM300\r");
        QTest::newRow("much too high") << QByteArray("/get port_name=COM70000\r");
        QTest::newRow("negative") << QByteArray("/get port_name=COM-3\r");
    }
    void testByNameWithANumberThatNoPortHas()
    {
        QFETCH(QByteArray, answer);
        Options o;
        o.driver.answer = answer.toStdString();
        o.setup.setPortText("COM8");
        o.open();
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestName");
        QCOMPARE(o.boxTexts(), QStringList({"Unable to open Teslin"}));
        QCOMPARE(o.portText(), "COM8");
        QCOMPARE(o.bar()->value(), 8);
        QCOMPARE(int{o.link.PortNumber}, 8); // the name in the box was taken
        o.click("cmdCancel");
        QCOMPARE(o.setup.portText(), "COM8");
        QCOMPARE(int{o.link.PortNumber}, 8);
    }

    // --- Test by port ---

    // kb-open-port
    void testByPortOpensThePortAndLeavesItOpen()
    {
        Options o;
        o.open();
        o.bar()->setValue(7);
        QStringList seen;
        o.boxes.expect(BoxAnswer::Ok, [&] {
            for (const char* name : {"cmdOK", "cmdCancel", "btnTestName", "btnTestPort"}) {
                seen << (o.button(name)->isEnabled() ? "on" : "off");
            }
            seen << o.button("btnTestPort")->text() << o.button("btnTestName")->text();
        });
        o.click("btnTestPort");
        QCOMPARE(o.boxTexts(), QStringList({"Teslin successfully opened"}));
        o.compareNotice(0);
        QCOMPARE(seen, QStringList({"off", "off", "on", "off", "testing", "&Test"}));
        QCOMPARE(o.button("btnTestPort")->text(), "&Test");
        QVERIFY(o.button("btnTestPort")->isEnabled());
        QVERIFY(o.button("cmdOK")->isEnabled());
        QVERIFY(o.button("cmdCancel")->isEnabled());
        QCOMPARE(int{o.link.PortNumber}, 7);
        QVERIFY(lines(o.log).contains("port: CommPort = 7"));
        QVERIFY(!linesWith(o.log, {"driver:"}).contains("driver: open \\\\.\\Teslin"));
        QVERIFY(o.port.PortOpen());
        QCOMPARE(lines(o.port.commands()), reader::kIdentification);
    }

    void testByPortThatDoesNotOpen()
    {
        Options o;
        o.port.openError = platform::SystemError{.number = 2, .description = "No such file or directory"};
        o.open();
        o.bar()->setValue(7);
        // The bar can be moved while the test runs.
        o.boxes.expect(BoxAnswer::Ok, [&] { o.bar()->setValue(9); });
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestPort");
        QCOMPARE(o.boxTexts(),
                 QStringList({"Could not open COM7, No such file or directory", "Unable to open the Teslin"}));
        o.compareNotice(1);
        QCOMPARE(int{o.link.PortNumber}, 7);
        QCOMPARE(o.bar()->value(), 7);
        QCOMPARE(o.portText(), "COM7");
        QVERIFY(o.dialog.isVisible());
    }

    // The port opened, but nobody is at its other end any more.
    void testByPortThatIsLostMeanwhile()
    {
        Options o;
        o.open();
        o.pump.atTick(2, [&] { o.port.loseConnection(); });
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestPort");
        QCOMPARE(o.boxTexts(), QStringList({"Unable to open the Teslin"}));
        o.compareNotice(0);
        QVERIFY(!o.port.PortOpen());
        QCOMPARE(o.DeviceLink::window.captions[device::Identification::Driver], "");
        QCOMPARE(int{o.link.PortNumber}, 5);
        QCOMPARE(o.bar()->value(), 5);
        QVERIFY(o.button("cmdOK")->isEnabled());
        QVERIFY(o.dialog.isVisible());
    }

    // The bar counts, not the box.
    // kb-saved-port
    void testByPortDoesNotReadTheTypedPort()
    {
        Options o;
        o.open();
        o.box("txtComPort")->setText("COM9");
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestPort");
        QCOMPARE(int{o.link.PortNumber}, 5);
    }

    void whileATestRunsTheDialogStaysAndTheOtherTestIsIgnored()
    {
        Options o;
        o.open();
        bool wasOpen = false;
        o.pump.atTick(2, [&] {
            o.dialog.close();
            QTest::keyClick(&o.dialog, Qt::Key_Escape);
            o.click("cmdCancel");
            o.click("btnTestName");
            wasOpen = o.dialog.isVisible();
        });
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestPort");
        QVERIFY(wasOpen);
        QVERIFY(linesWith(o.log, {"driver:"}).isEmpty());
        QCOMPARE(o.boxTexts(), QStringList({"Teslin successfully opened"}));
        QVERIFY(o.dialog.close());
    }

    void aTestIsIgnoredWhileTheDeviceIsInUse()
    {
        Options o;
        o.open();
        QVERIFY(o.operations.run([&] {
            o.click("btnTestName");
            o.click("btnTestPort");
        }));
        QVERIFY(o.log.empty());
        QVERIFY(o.button("cmdOK")->isEnabled());
    }

    // --- OK and Cancel ---

    void okSavesAndCloses()
    {
        Options o;
        o.open();
        QTest::keyClicks(o.box("txtFriendlyName"), "Teslin2");
        o.bar()->setValue(12);
        o.click("cmdOK");
        QCOMPARE(o.saved, 1);
        QCOMPARE(o.savedName, "Teslin2");
        QCOMPARE(o.savedPort, "COM12");
        QVERIFY(!o.dialog.isVisible());
        // The next opening shows what was kept.
        o.open();
        QCOMPARE(o.portText(), "COM12");
        QCOMPARE(o.bar()->value(), 12);
    }

    // kb-cancelled-options
    void cancelSavesNothingKeepsTheNameAndPutsThePortBack_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("Cancel") << 0;
        QTest::newRow("Escape") << 1;
        QTest::newRow("close box") << 2;
    }
    void cancelSavesNothingKeepsTheNameAndPutsThePortBack()
    {
        QFETCH(int, way);
        Options o;
        o.setup.setPortText("COM8");
        o.open();
        QTest::keyClicks(o.box("txtFriendlyName"), "Teslin2");
        o.bar()->setValue(12);
        if (way == 0) {
            o.click("cmdCancel");
        } else if (way == 1) {
            QTest::keyClick(o.box("txtFriendlyName"), Qt::Key_Escape);
        } else {
            o.dialog.close();
        }
        QVERIFY(!o.dialog.isVisible());
        QCOMPARE(o.saved, 0);
        QCOMPARE(o.link.DriverFriendlyName, "Teslin2");
        QCOMPARE(o.setup.portText(), "COM8");
        QCOMPARE(o.portText(), "COM8");
        QCOMPARE(o.bar()->value(), 8);
    }

    // kb-tested-port
    void cancelAfterATestKeepsTheTestedPort()
    {
        Options o;
        o.open();
        o.bar()->setValue(7);
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestPort");
        o.bar()->setValue(20);
        o.click("cmdCancel");
        QCOMPARE(o.saved, 0);
        QCOMPARE(int{o.link.PortNumber}, 7);
        QCOMPARE(o.setup.portText(), "COM7");
        QCOMPARE(o.bar()->value(), 7);
        // At the next opening nothing has been tested yet.
        o.open();
        o.bar()->setValue(20);
        o.click("cmdCancel");
        QCOMPARE(o.setup.portText(), "COM7");
        QCOMPARE(o.bar()->value(), 7);
    }

    void cancelAfterAFailedTestByNamePutsThePortBack()
    {
        Options o;
        o.driver.openError = platform::SystemError{.number = 2, .description = "No such file or directory"};
        o.link.PortNumber = 5;
        o.setup.setPortText("COM8");
        o.open();
        o.bar()->setValue(12);
        o.boxes.expect(BoxAnswer::Ok);
        o.click("btnTestName");
        o.click("cmdCancel");
        QCOMPARE(o.setup.portText(), "COM8");
        QCOMPARE(int{o.link.PortNumber}, 5);
    }

    void aDetectionMeanwhileShows()
    {
        Options o;
        o.open();
        QVERIFY(o.setupConnection.Detect());
        QCOMPARE(o.portText(), "COM12");
        QCOMPARE(o.bar()->value(), 12);
    }

    // --- Keyboard ---

    // kb-same-letter
    void tabReachesEveryControl()
    {
        Options o;
        o.open();
        QStringList order;
        do {
            order << o.dialog.focusWidget()->objectName();
            QTest::keyClick(o.dialog.focusWidget(), Qt::Key_Tab);
        } while (!o.box("txtFriendlyName")->hasFocus() && order.size() < 20);
        QCOMPARE(order, QStringList({"txtFriendlyName", "btnTestName", "txtComPort", "btnTestPort", "sclComPort",
                                     "cmdOK", "cmdCancel", "tbsOptions"}));
    }

    void enterIsOkInABoxAndTheButtonOnAButton()
    {
        Options o;
        o.open();
        o.boxes.expect(BoxAnswer::Ok);
        o.button("btnTestName")->setFocus();
        QTest::keyClick(o.button("btnTestName"), Qt::Key_Return);
        QCOMPARE(o.saved, 0);
        QVERIFY(o.dialog.isVisible());
        o.box("txtComPort")->setFocus();
        QTest::keyClick(o.box("txtComPort"), Qt::Key_Return);
        QCOMPARE(o.saved, 1);
        QVERIFY(!o.dialog.isVisible());
    }

    // With its single tab there is nowhere to go, and nothing must break.
    void controlTabGoesRoundTheTabs()
    {
        Options o;
        o.open();
        QTest::keyClick(o.box("txtComPort"), Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyClick(o.box("txtComPort"), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(o.dialog.findChild<QTabBar*>("tbsOptions")->currentIndex(), 0);
        QVERIFY(o.dialog.findChild<QWidget*>("picOptions")->isVisible());
    }

    void choosingItAgainKeepsWhatWasTyped()
    {
        Options o;
        o.open();
        o.bar()->setValue(12);
        o.dialog.showInFront();
        QCOMPARE(o.portText(), "COM12");
        o.click("cmdCancel");
        QCOMPARE(o.setup.portText(), "COM5");
    }
};

static const testsupport::RunnableTest<OptionsDialogTest> kRunnable;
#include "OptionsDialogTest.moc"
