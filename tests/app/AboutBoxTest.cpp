// The about box, its way to the system-information tool, and the check for the driver that it hosts.

#include "app/dialogs/frmAbout.h"
#include "app/startup/ProgramText.h"
#include "app/startup/ProgramVersion.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/PathText.h"
#include "tests/support/CountingBeep.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SystemTools.h"
#include "tests/support/TestMessageBoxes.h"
#include "tests/support/TextToString.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace testsupport;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

namespace {

const std::string kToolPath = R"(SOFTWARE\Microsoft\Shared Tools\MSINFO|PATH)";
const std::string kToolFolder = R"(SOFTWARE\Microsoft\Shared Tools Location|MSINFO)";

// The about box on a system of the test's own.
struct About
{
    // An empty file under a drive's folder, such as "c:/a/b".
    void makeFile(const QString& name)
    {
        const QString path = folder.filePath(name);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    [[nodiscard]] QString textOf(const char* label) { return box.findChild<QLabel*>(QLatin1String(label))->text(); }
    [[nodiscard]] QPushButton* button(const char* name) { return box.findChild<QPushButton*>(QLatin1String(name)); }
    void open()
    {
        box.Form_Load();
        box.show();
        if (!QTest::qWaitForWindowActive(&box)) {
            qFatal("the box did not become active");
        }
    }

    QTemporaryDir folder;
    platform::DosNames names{platform::toPath(folder.path())};
    FakeRegistry registry;
    RecordingStart programs;
    TestMessageBoxes boxes;
    CountingBeep beep;
    app::frmAbout box{registry, programs, names, boxes, nullptr};
};

} // namespace

class AboutBoxTest final : public QObject
{
    Q_OBJECT

private slots:
    void itNamesProgramVersionAndPart()
    {
        About a;
        a.open();
        QCOMPARE(a.box.windowTitle(), "About Teslin Configure");
        QCOMPARE(a.textOf("lblTitle"), "Teslin Configure");
        QCOMPARE(a.textOf("lblVersion"), "Version: 1.04.0001");
        QCOMPARE(a.textOf("lblPartNumber"), "Part Number: 51208864");
        QCOMPARE(a.textOf("lblDisclaimer"), "All rights reserved");
        QCOMPARE(a.textOf("Label1"), platform::toQString(app::kLegalNotice));
        QVERIFY(QRegularExpression("\\b20\\d\\d\\b").match(a.textOf("Label1")).hasMatch()); // the year
        QVERIFY(!a.textOf("SysInfo").isEmpty());
        QCOMPARE(a.button("cmdSysInfo")->text(), "&System Info...");
        QVERIFY(!a.box.findChild<QLabel*>("picIcon")->pixmap().isNull());
        QVERIFY(!a.box.isModal());
        for (const QLabel* label : a.box.findChildren<QLabel*>()) {
            QVERIFY(label->isVisible());
        }
    }

    void nothingInItTouches()
    {
        About a;
        a.open();
        const auto gapBelow = [&a](const char* upper, const char* lower) {
            const QRect above = a.box.findChild<QWidget*>(QLatin1String(upper))->geometry();
            const QRect below = a.box.findChild<QWidget*>(QLatin1String(lower))->geometry();
            return below.top() - above.bottom() - 1;
        };
        QVERIFY(gapBelow("cmdOK", "cmdSysInfo") >= 6);
        for (const auto& [upper, lower] :
             {std::pair("lblTitle", "lblVersion"), std::pair("lblVersion", "lblPartNumber"),
              std::pair("Label1", "lblDisclaimer"), std::pair("lblDisclaimer", "SysInfo")}) {
            QVERIFY2(gapBelow(upper, lower) >= 3, lower);
        }
    }

    void okEnterAndEscapeCloseIt_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("click") << 0;
        QTest::newRow("Enter") << int{Qt::Key_Return};
        QTest::newRow("Escape") << int{Qt::Key_Escape};
        QTest::newRow("blank") << int{Qt::Key_Space};
    }
    void okEnterAndEscapeCloseIt()
    {
        QFETCH(int, key);
        About a;
        a.open();
        QSignalSpy unloaded(&a.box, &app::frmAbout::unloaded);
        QVERIFY(a.button("cmdOK")->hasFocus());
        if (key == 0) {
            QTest::mouseClick(a.button("cmdOK"), Qt::LeftButton);
        } else {
            QTest::keyClick(a.box.focusWidget(), Qt::Key(key));
        }
        QVERIFY(!a.box.isVisible());
        QCOMPARE(unloaded.count(), 1);
        QVERIFY(a.programs.started.empty());
    }

    void hidingItCountsAsUnloading()
    {
        About a;
        a.open();
        QSignalSpy unloaded(&a.box, &app::frmAbout::unloaded);
        a.box.hide();
        QCOMPARE(unloaded.count(), 1);
    }

    // --- System information ---

    void theToolThatTheRegistryNamesIsStarted()
    {
        About a;
        a.registry.setText(kToolPath, R"(%ProgramFiles%\Tools\msinfo32.exe)");
        a.registry.setText(kToolFolder, R"(C:\Other)");
        a.open();
        QTest::mouseClick(a.button("cmdSysInfo"), Qt::LeftButton);
        QCOMPARE(a.programs.started, std::vector<std::string>{R"(%ProgramFiles%\Tools\msinfo32.exe)"});
        QVERIFY(a.boxes.shown.empty());
        QVERIFY(a.box.isVisible());
    }

    void elseTheToolInTheFolderThatTheRegistryNames()
    {
        About a;
        a.makeFile("c:/Tools/msinfo32.exe");
        a.registry.setText(kToolFolder, R"(C:\Tools)");
        a.box.StartSysInfo();
        QCOMPARE(a.programs.started, std::vector<std::string>{R"(C:\Tools\MSINFO32.EXE)"});
        QVERIFY(a.boxes.shown.empty());
    }

    void otherwiseTheUserIsTold_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("folder");
        QTest::addColumn<bool>("toolIsThere");
        QTest::addColumn<bool>("starts");
        QTest::addColumn<int>("attempts");
        QTest::newRow("nothing named") << QByteArray() << QByteArray() << true << true << 0;
        QTest::newRow("a folder without the tool") << QByteArray() << QByteArray(R"(C:\Tools)") << false << true << 0;
        QTest::newRow("a tool that does not start") << QByteArray(R"(C:\a.exe)") << QByteArray() << true << false << 1;
        QTest::newRow("no second try") << QByteArray(R"(C:\a.exe)") << QByteArray(R"(C:\Tools)") << true << false << 1;
        QTest::newRow("the second does not start") << QByteArray() << QByteArray(R"(C:\Tools)") << true << false << 1;
    }
    void otherwiseTheUserIsTold()
    {
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, folder);
        QFETCH(bool, toolIsThere);
        QFETCH(bool, starts);
        QFETCH(int, attempts);
        About a;
        if (!path.isNull()) {
            a.registry.setText(kToolPath, path.toStdString());
        }
        if (!folder.isNull()) {
            a.registry.setText(kToolFolder, folder.toStdString());
        }
        if (toolIsThere) {
            a.makeFile("c:/Tools/MSINFO32.EXE");
        }
        a.programs.starts = starts;
        a.boxes.expect(BoxAnswer::Ok);
        a.box.cmdSysInfo_Click();
        QCOMPARE(static_cast<int>(a.programs.started.size()), attempts);
        QVERIFY(a.boxes.verifyAllUsed());
        QCOMPARE(a.boxes.lastText(), "System Information Is Unavailable At This Time");
        QCOMPARE(a.boxes.shown[0].title, "");
        QCOMPARE(a.boxes.shown[0].icon, BoxIcon::None);
        QCOMPARE(a.boxes.shown[0].buttons, BoxButtons::Ok);
    }

    void registryValuesAsText()
    {
        About a;
        a.registry.values["K|text"] = {.type = platform::kRegistryString, .bytes = std::string("abc\0def\0", 8)};
        a.registry.values["K|number"] = {.type = platform::kRegistryDoubleWord, .bytes = "\x01\x02\x03\xFF"};
        a.registry.values["K|other"] = {.type = 3, .bytes = std::string("a\0b", 3)};
        std::string text = "before";
        QVERIFY(!a.box.GetKeyValue(platform::kLocalMachine, "K", "missing", text));
        QVERIFY(!a.box.GetKeyValue(0x80000001, "K", "text", text));
        QCOMPARE(text, "before");
        QVERIFY(a.box.GetKeyValue(platform::kLocalMachine, "K", "text", text));
        QCOMPARE(text, "abc");
        QVERIFY(a.box.GetKeyValue(platform::kLocalMachine, "K", "number", text));
        QCOMPARE(text, "4278387201"); // FF030201, unsigned
        QVERIFY(a.box.GetKeyValue(platform::kLocalMachine, "K", "other", text));
        QCOMPARE(text, std::string("a\0b", 3));
        QVERIFY(a.boxes.shown.empty());
    }

    // --- Driver check ---

    // kb-driver-places
    void theDriverIsFoundAtAnyOfItsPlaces_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("found");
        QTest::newRow("95 to ME") << "c:/Windows/System/Teslin.vxd" << true;
        QTest::newRow("NT") << "c:/WINNT/system32/drivers/Teslin.sys" << true;
        QTest::newRow("2000 and later") << "c:/Windows/system32/drivers/Teslin.sys" << true;
        QTest::newRow("in other letters") << "c:/WINDOWS/System32/Drivers/teslin.SYS" << true;
        QTest::newRow("nowhere") << "c:/Windows/readme.txt" << false;
        QTest::newRow("another driver") << "c:/Windows/system32/drivers/Teslin2.sys" << false;
        QTest::newRow("another folder") << "c:/Win/system32/drivers/Teslin.sys" << false;
        QTest::newRow("a folder of that name") << "c:/Windows/system32/drivers/Teslin.sys/file" << false;
        QTest::newRow("another drive") << "d:/Windows/system32/drivers/Teslin.sys" << false;
    }
    void theDriverIsFoundAtAnyOfItsPlaces()
    {
        QFETCH(QString, file);
        QFETCH(bool, found);
        About a;
        a.makeFile(file);
        if (!found) {
            a.boxes.expect(BoxAnswer::Ok);
        }
        QCOMPARE(app::frmAbout::KSD_Driver_Is_Installed(a.names, a.boxes, a.beep), found);
        QCOMPARE(a.beep.count, found ? 0 : 1);
        QCOMPARE(a.boxes.shown.size(), std::size_t(found ? 0 : 1));
        QVERIFY(!a.box.isVisible());
    }

    void withoutADriverTheUserIsToldWhereToGetIt()
    {
        About a;
        a.boxes.expect(BoxAnswer::Ok, [&] { QCOMPARE(a.beep.count, 1); }); // the beep comes first
        QVERIFY(!app::frmAbout::KSD_Driver_Is_Installed(platform::DosNames(std::filesystem::path()), a.boxes, a.beep));
        const std::string& text = a.boxes.shown.at(0).text;
        QVERIFY(text.starts_with(
            "The Teslin KSD driver needs to be loaded before this program will work.  You may look at the program but "
            "nothing will be functional until the driver is installed.\r\nThe KSD driver can be obtained at https://"));
        QVERIFY(text.ends_with(":\r\nPart Number:\t60051410 for Windows 95/98 and ME\r\n"
                               "\t\t60051411 for Windows NT\r\n"
                               "\t\t60051412 for Windows 2K and XP"));
        QCOMPARE(a.boxes.shown[0].icon, BoxIcon::Critical);
        QCOMPARE(a.boxes.shown[0].buttons, BoxButtons::Ok);
        QCOMPARE(a.boxes.shown[0].title, "");
    }
};

static const testsupport::RunnableTest<AboutBoxTest> kRunnable;
#include "AboutBoxTest.moc"
