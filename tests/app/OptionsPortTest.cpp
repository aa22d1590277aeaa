#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

using namespace testsupport;
using platform::BoxAnswer;

namespace {

// The real window with its options open, and what it leaves in the settings file.
struct Desk
{
    Desk()
    {
        f.driver.answer = "/get port_name=COM12\r";
        f.start();
    }

    void open() const
    {
        f.find<QAction>("mnuOptions")->trigger();
        if (!f.find<QDialog>("frmOptions")->isVisible()) {
            qFatal("the options did not open");
        }
    }
    [[nodiscard]] QScrollBar& bar() const { return *f.find<QScrollBar>("sclComPort"); }
    [[nodiscard]] QLineEdit& box() const { return *f.find<QLineEdit>("txtComPort"); }
    // Presses a button that message boxes answer, all with OK.
    QStringList test(const char* button)
    {
        const std::size_t before = f.boxes.shown.size();
        QTest::mouseClick(f.find<QPushButton>(button), Qt::LeftButton);
        QStringList texts;
        for (std::size_t i = before; i < f.boxes.shown.size(); ++i) {
            texts << QString::fromStdString(f.boxes.shown[i].text);
        }
        return texts;
    }
    void click(const char* button) const
    {
        QTest::mouseClick(f.find<QDialog>("frmOptions")->findChild<QPushButton*>(QLatin1String(button)),
                          Qt::LeftButton);
    }
    // Ends the program; the port that it wrote.
    [[nodiscard]] QByteArray portAfterExit()
    {
        f.press("KEY_EXIT");
        QFile file(QString::fromStdString(f.settingsFile().string()));
        if (f.window->isVisible() || !file.open(QIODevice::ReadOnly)) {
            return "no end, or no settings";
        }
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.startsWith("Virtual Port=")) {
                return line.mid(13).trimmed();
            }
        }
        return "no port";
    }

    MainWindowFixture f;
};

} // namespace

// Which port the options leave behind, for the rest of the run and in the settings, by the way through them.
class OptionsPortTest final : public QObject
{
    Q_OBJECT

private slots:
    // The number of the lower test stays in use although it could not be opened.
    void aFailedPortTestStaysAfterCancel()
    {
        Desk d;
        d.open();
        d.bar().setValue(7);
        d.f.reader.opens = false;
        d.f.boxes.expect(BoxAnswer::Ok);
        d.f.boxes.expect(BoxAnswer::Ok);
        QCOMPARE(d.test("btnTestPort"),
                 QStringList({"Could not open COM7, No such file or directory", "Unable to open the Teslin"}));
        d.click("cmdCancel");
        QCOMPARE(d.box().text(), "COM7");
        d.f.reader.opens = true;
        d.f.press("KEY_RETRIEVE");
        QCOMPARE(d.f.reader.port, 7);
        QCOMPARE(d.portAfterExit(), "COM7");
    }

    void cancelAfterATestThatNamesNoUsablePortPutsThePortBack_data()
    {
        QTest::addColumn<QByteArray>("answer");
        for (const char* port : {"COM0", "COM", "COM-3", "COM70000"}) {
            QTest::newRow(port) << QByteArray("/get port_name=") + port + "\r";
        }
    }
    void cancelAfterATestThatNamesNoUsablePortPutsThePortBack()
    {
        QFETCH(QByteArray, answer);
        Desk d;
        d.f.driver.answer = answer.toStdString();
        d.open();
        d.f.boxes.expect(BoxAnswer::Ok);
        QCOMPARE(d.test("btnTestName").size(), 1);
        d.click("cmdCancel");
        QCOMPARE(d.box().text(), "COM5");
        QCOMPARE(d.bar().value(), 5);
        QCOMPARE(d.portAfterExit(), "COM5");
    }

    void whatATestSetEndsWithTheDialog()
    {
        Desk d;
        d.open();
        d.bar().setValue(7);
        d.f.boxes.expect(BoxAnswer::Ok);
        QCOMPARE(d.test("btnTestPort"), QStringList({"Teslin successfully opened"}));
        d.bar().setValue(20);
        d.click("cmdOK");
        d.open();
        d.bar().setValue(30);
        d.click("cmdCancel");
        QCOMPARE(d.box().text(), "COM20");
        QCOMPARE(d.bar().value(), 20);
        QCOMPARE(d.portAfterExit(), "COM20");
    }

    // The port is in use already; it is the test's all the same.
    void theUpperTestSetsThePortThatItFindsAgain()
    {
        Desk d;
        d.open();
        d.f.boxes.expect(BoxAnswer::Ok);
        QCOMPARE(d.test("btnTestName"), QStringList({"Teslin successfully opened (COM port 12 found)"}));
        d.bar().setValue(20);
        d.click("cmdOK");
        d.open();
        QCOMPARE(d.box().text(), "COM20");
        d.f.boxes.expect(BoxAnswer::Ok);
        QCOMPARE(d.test("btnTestName"), QStringList({"Teslin successfully opened (COM port 12 found)"}));
        d.bar().setValue(30);
        d.click("cmdCancel");
        QCOMPARE(d.box().text(), "COM12");
        QCOMPARE(d.bar().value(), 12);
        QCOMPARE(d.portAfterExit(), "COM12");
    }

    // The bar is set after the answer has been shown, and names the port as it does at every move.
    void theUpperTestPutsTheBarOnItsPort()
    {
        Desk d;
        d.open();
        d.f.boxes.expect(BoxAnswer::Ok, [&] { d.bar().setValue(30); });
        QCOMPARE(d.test("btnTestName").size(), 1);
        QCOMPARE(d.bar().value(), 12);
        QCOMPARE(d.box().text(), "COM12");
        d.click("cmdOK");
        QCOMPARE(d.portAfterExit(), "COM12");
    }

    void theBarsNumberStaysInItsRange()
    {
        device::VirtualPort setup;
        setup.setPortScroll(300);
        QCOMPARE(setup.portScroll(), 256);
        setup.setPortScroll(0);
        QCOMPARE(setup.portScroll(), 1);
        setup.setPortScroll(-3);
        QCOMPARE(setup.portScroll(), 1);
        setup.setPortScroll(256);
        QCOMPARE(setup.portScroll(), 256);
    }
};

static const testsupport::RunnableTest<OptionsPortTest> kRunnable;
#include "OptionsPortTest.moc"
