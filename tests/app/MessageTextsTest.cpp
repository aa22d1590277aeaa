// Every message box of the program: text, title, icon, buttons and default, from the situation that brings it up in the
// real main window, and as the window that the user sees.

#include "app/dialogs/frmAbout.h"
#include "app/startup/ProgramText.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/QtMessageBoxes.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SystemFailures.h"
#include "tests/support/TextToString.h"

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QScrollBar>

#include <functional>
#include <vector>

using namespace testsupport;
using app::kKeyboardLanguageTab;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::MessageBox;

namespace {

constexpr const char* kTitle = "Teslin Configure"; // of boxes without a title of their own

struct Asked
{
    MessageBox box;
    BoxAnswer answer = BoxAnswer::Ok;
};

struct Situation
{
    const char* name;
    std::function<void(MainWindowFixture&)> bringUp;
    std::vector<Asked> boxes; // that come up, in their order
};

MessageBox notice(std::string text, std::string title = kTitle, BoxIcon icon = BoxIcon::None)
{
    return {.text = std::move(text), .title = std::move(title), .icon = icon};
}

const MessageBox kNoDriver = notice("Was unable to open the Teslin Device Driver.  Check to see if the driver is "
                                    "installed and the Teslin is attached",
                                    kTitle, BoxIcon::Critical);

// --- What a user does ---

void retrieve(MainWindowFixture& f)
{
    f.start();
    f.press("KEY_RETRIEVE");
}

void showTab(MainWindowFixture& f, int tab)
{
    f.find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
}

void showNotes(MainWindowFixture& f, int tab)
{
    f.start();
    showTab(f, tab);
    QTest::mouseClick(f.find<QPushButton>("btnNotes"), Qt::LeftButton);
}

void closeChanged(MainWindowFixture& f, bool configuration, bool keyboardLanguage)
{
    f.start();
    f.table_CFG().TableChanged = configuration;
    f.table_KB().TableChanged = keyboardLanguage;
    f.window->close();
    f.table_CFG().TableChanged = f.table_KB().TableChanged = false;
}

void doubleClick(MainWindowFixture& f, int tab, int row)
{
    f.start();
    showTab(f, tab);
    auto* grid = f.find<tables::ParamGrid>(tab == kKeyboardLanguageTab ? "grdKB" : "grdCFG");
    const QPoint place = grid->visualRect(grid->model()->index(row - 1, tables::kValueColumn)).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

void saveAs(MainWindowFixture& f, const std::filesystem::path& name)
{
    f.start();
    f.dialogs.expect(TestFileDialogs::Kind::Save, name);
    f.find<QAction>("mnuSaveAs_CFG")->trigger();
}

void test(MainWindowFixture& f, const char* button)
{
    f.find<QAction>("mnuOptions")->trigger();
    QTest::mouseClick(f.find<QPushButton>(button), Qt::LeftButton);
}

void updateSingle(MainWindowFixture& f, const char* address, const char* value)
{
    f.start();
    f.find<QAction>("mnuEditSingle")->trigger();
    f.find<QLineEdit>("txtSingleAddress")->setText(QLatin1String(address));
    f.find<QLineEdit>("txtSingleValue")->setText(QLatin1String(value));
    QTest::mouseClick(f.find<QPushButton>("btnUpdateSingleField"), Qt::LeftButton);
    f.table_CFG().TableChanged = f.table_KB().TableChanged = false;
}

void askForSystemInformation(MainWindowFixture& f)
{
    f.start();
    QTimer::singleShot(0, f.window.get(), [&f] {
        QTest::mouseClick(f.find<QPushButton>("cmdSysInfo"), Qt::LeftButton);
        f.window->findChild<app::frmAbout*>()->close();
    });
    f.find<QAction>("mnuAbout")->trigger();
}

// --- The situations ---

std::vector<Situation> startAndHelp()
{
    return {
        {"no driver file",
         [](MainWindowFixture& f) {
             QVERIFY(QFile::remove(f.driverFile()));
             f.start();
         },
         {{notice("The Teslin KSD driver needs to be loaded before this program will work.  You may look at the "
                  "program but nothing will be functional until the driver is installed.\r\n"
                  "The KSD driver can be obtained at " +
                      std::string(app::kSupportAddress) +
                      ":\r\n"
                      "Part Number:\t60051410 for Windows 95/98 and ME\r\n"
                      "\t\t60051411 for Windows NT\r\n"
                      "\t\t60051412 for Windows 2K and XP",
                  kTitle, BoxIcon::Critical)}}},
        {"notes on the Configuration table",
         [](MainWindowFixture& f) { showNotes(f, 0); },
         {{notice("1. Select the \"Keyboard Language\" tab to review the keyboard\r\n"
                  "     scan code entries.\r\n"
                  "2. The Keyboard Language tab contains the addresses 080 to 114.\r\n"
                  "3. Any other address not shown is reserved for future use.\r\n"
                  "4. Parameter 01B: A special character is any character with an ASCII.\r\n"
                  "     value less than 0x20.\r\n"
                  "5. Parameter 027: The Command prefix must not be set to a character\r\n"
                  "     that could appear in a command since a new command is started\r\n"
                  "     whenever this character is detected.\r\n"
                  "6  Double-clicking a value in the table allows you to send that one\r\n"
                  "     value to the Teslin.",
                  "Notes on the Configuration table", BoxIcon::Information)}}},
        {"notes on the Keyboard Language table",
         [](MainWindowFixture& f) { showNotes(f, 1); },
         {{notice("1. Select the \"Configuration\" tab to review the general\r\n"
                  "     configuration entries.\r\n"
                  "2. The Configuration tab contains the addresses 001 to 02D.\r\n"
                  "3. Any other address not shown is reserved for future use.\r\n"
                  "4. The parameters at address 081 and above are shown in pairs.\r\n"
                  "     * The leftmost address corresponds to the leftmost parameter.\r\n"
                  "     * The rightmost address corresponds to the rightmost parameter.\r\n"
                  "5. Each of the parameter pairs from 083 to 113 have a bit field and\r\n"
                  "     a scan code value.\r\n"
                  "6. Double-clicking a value in the table allows you to send that one\r\n"
                  "     value to the Teslin.",
                  "Notes on the Keyboard Language table", BoxIcon::Information)}}},
        {"brief help",
         [](MainWindowFixture& f) {
             f.start();
             f.find<QAction>("mnuRead")->trigger();
         },
         {{notice("Read the Teslin\x99 Swipe Reader Technical Manual (P/N 60044718) for details.\r\n"
                  "Connect Teslin and click the Retrieve button to download current values.\r\n"
                  "Click the Update button to send edited values back to the Teslin.",
                  "Teslin Configure help")}}},
        {"no system information",
         askForSystemInformation,
         {{notice("System Information Is Unavailable At This Time")}}},
    };
}

std::vector<Situation> link()
{
    return {
        {"no device object",
         [](MainWindowFixture& f) {
             f.driver.opens = false;
             retrieve(f);
         },
         {{kNoDriver}}},
        {"a driver without a port",
         [](MainWindowFixture& f) {
             platform::ProfileStrings settings(f.settingsFile());
             QVERIFY(settings.set("Port", "Virtual Port", "none"));
             f.driver.answer = "/get port_name=none\r";
             retrieve(f);
         },
         {{notice("Could not open Teslin port!", "Error", BoxIcon::Exclamation)}, {kNoDriver}}},
        {"a port that does not open",
         [](MainWindowFixture& f) {
             f.reader.opens = false;
             retrieve(f);
         },
         {{notice("Could not open COM5, No such file or directory", kTitle, BoxIcon::Critical)}}},
        {"an empty line",
         [](MainWindowFixture& f) {
             f.reader.answers = [&f](const std::string& command) {
                 return command == "/rawxact WPV001" ? std::optional<std::string>("") : f.model.answerTo(command);
             };
             retrieve(f);
         },
         {{notice("No data read")}}},
    };
}

std::vector<Situation> unsavedChanges()
{
    const auto question = [](const std::string& table) {
        return MessageBox{.text = table + " table changed but not saved!\r\nDo you wish to save now?",
                          .title = table,
                          .icon = BoxIcon::Question,
                          .buttons = BoxButtons::YesNoCancel,
                          .defaultButton = BoxAnswer::Yes};
    };
    const Asked configuration = {question("Configuration"), BoxAnswer::Cancel};
    const Asked keyboardLanguage = {question("Keyboard Language"), BoxAnswer::Cancel};
    return {
        {"closing, Configuration changed", [](MainWindowFixture& f) { closeChanged(f, true, false); }, {configuration}},
        {"closing, Keyboard Language changed",
         [](MainWindowFixture& f) { closeChanged(f, false, true); },
         {keyboardLanguage}},
        {"closing, both changed",
         [](MainWindowFixture& f) { closeChanged(f, true, true); },
         {configuration, keyboardLanguage}},
        {"Set Default",
         [](MainWindowFixture& f) {
             f.start();
             f.table_CFG().TableChanged = true;
             f.press("KEY_DEFAULT");
             f.table_CFG().TableChanged = false;
         },
         {configuration}},
        {"Retrieve",
         [](MainWindowFixture& f) {
             f.start();
             showTab(f, kKeyboardLanguageTab);
             f.table_KB().TableChanged = true;
             f.press("KEY_RETRIEVE");
             f.table_KB().TableChanged = false;
         },
         {keyboardLanguage}},
    };
}

std::vector<Situation> sendingOneRow()
{
    const auto question = [](std::string text) {
        return MessageBox{.text = std::move(text),
                          .title = "Send Single Setting",
                          .icon = BoxIcon::Question,
                          .buttons = BoxButtons::YesNo,
                          .defaultButton = BoxAnswer::No};
    };
    return {
        {"a Configuration row",
         [](MainWindowFixture& f) { doubleClick(f, 0, 2); },
         {{question("Do you want to send this parameter? ( 013=95)"), BoxAnswer::Yes}}},
        {"the keyboard flags",
         [](MainWindowFixture& f) { doubleClick(f, 1, 1); },
         {{question("Do you want to send this parameter? ( 080=00 )"), BoxAnswer::Yes},
          {notice("Sent parameter: 080=00")}}},
        {"a pair",
         [](MainWindowFixture& f) { doubleClick(f, 1, 3); },
         {{question("Do you want to send these parameters? ( 083=20 and 084=03 )"), BoxAnswer::Yes},
          {notice("Sent parameters: 083=20 and 084=03")}}},
    };
}

std::vector<Situation> savingFiles()
{
    // The folder's name is not known before the test runs; {} stands for it.
    return {
        {"a file that exists",
         [](MainWindowFixture& f) {
             QFile file(f.folder.filePath("shop.tlc"));
             QVERIFY(file.open(QIODevice::WriteOnly));
             saveAs(f, platform::toPath(file.fileName()));
         },
         {{{.text = "File: {}/shop.tlc already exists! Do you want to overwrite it? (Yes=overwrite, No=get another "
                    "filename, Cancel=cancel save operation)",
            .title = "*** Warning ***",
            .icon = BoxIcon::Exclamation,
            .buttons = BoxButtons::YesNoCancel,
            .defaultButton = BoxAnswer::No},
           BoxAnswer::Cancel}}},
        {"a file that cannot be written",
         [](MainWindowFixture& f) { saveAs(f, platform::toPath(f.folder.filePath("missing/shop.tlc"))); },
         {{notice("Unable to save file: \"{}/missing/shop.tlc\" because " +
                      testsupport::reasonOf(testsupport::kNoFolder),
                  kTitle, BoxIcon::Exclamation)}}},
    };
}

std::vector<Situation> optionsAndSingleSetting()
{
    return {
        {"a name that works",
         [](MainWindowFixture& f) {
             f.start();
             test(f, "btnTestName");
         },
         {{notice("Teslin successfully opened (COM port 5 found)")}}},
        {"a name that does not",
         [](MainWindowFixture& f) {
             f.driver.opens = false;
             f.start();
             test(f, "btnTestName");
         },
         {{notice("Unable to open Teslin")}}},
        {"a port that works",
         [](MainWindowFixture& f) {
             f.start();
             test(f, "btnTestPort");
         },
         {{notice("Teslin successfully opened")}}},
        {"a port that does not",
         [](MainWindowFixture& f) {
             f.reader.opens = false;
             f.start();
             test(f, "btnTestPort");
         },
         {{notice("Could not open COM5, No such file or directory", kTitle, BoxIcon::Critical)},
          {notice("Unable to open the Teslin")}}},
        {"a Configuration setting",
         [](MainWindowFixture& f) { updateSingle(f, "013", "94"); },
         {{notice("Updated Configuration table with 013=94", kTitle, BoxIcon::Information)}}},
        {"a Keyboard Language setting",
         [](MainWindowFixture& f) { updateSingle(f, "084", "04"); },
         {{notice("Updated Keyboard Language table with 084=04", kTitle, BoxIcon::Information)}}},
    };
}

const std::vector<Situation>& situations()
{
    static const std::vector<Situation> all = [] {
        std::vector<Situation> list;
        for (const auto& group :
             {startAndHelp(), link(), unsavedChanges(), sendingOneRow(), savingFiles(), optionsAndSingleSetting()}) {
            list.insert(list.end(), group.begin(), group.end());
        }
        return list;
    }();
    return all;
}

std::string inFolder(std::string text, const QTemporaryDir& folder)
{
    const std::size_t at = text.find("{}");
    return at == std::string::npos ? text : text.replace(at, 2, platform::toAnsi(folder.path()));
}

} // namespace

class MessageTextsTest final : public QObject
{
    Q_OBJECT

private:
    static void rows()
    {
        QTest::addColumn<int>("index");
        int index = 0;
        for (const Situation& situation : situations()) {
            QTest::newRow(situation.name) << index++;
        }
    }

private slots:
    void everySituationBringsUpItsBoxes_data() { rows(); }
    void everySituationBringsUpItsBoxes()
    {
        QFETCH(int, index);
        const Situation& situation = situations()[static_cast<std::size_t>(index)];
        MainWindowFixture f;
        for (const Asked& asked : situation.boxes) {
            f.boxes.expect(asked.answer);
        }
        situation.bringUp(f);
        QVERIFY(f.boxes.verifyAllUsed());
        QCOMPARE(f.boxes.shown.size(), situation.boxes.size());
        for (std::size_t i = 0; i < situation.boxes.size(); ++i) {
            const MessageBox& expected = situation.boxes[i].box;
            const MessageBox& shown = f.boxes.shown[i];
            QCOMPARE(shown.text, inFolder(expected.text, f.folder));
            QCOMPARE(shown.title.empty() ? std::string(kTitle) : shown.title, expected.title);
            QCOMPARE(shown.icon, expected.icon);
            QCOMPARE(shown.buttons, expected.buttons);
            QCOMPARE(shown.defaultButton, expected.defaultButton);
        }
    }

    void asTheWindowThatTheUserSees_data() { rows(); }
    void asTheWindowThatTheUserSees()
    {
        QFETCH(int, index);
        platform::QtMessageBoxes boxes(platform::toQString(app::kProgramTitle));
        for (const Asked& asked : situations()[static_cast<std::size_t>(index)].boxes) {
            bool seen = false;
            QTimer::singleShot(0, qApp, [&] {
                auto* window = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                QVERIFY(window != nullptr);
                compareWindow(*window, asked.box);
                seen = true;
                window->close();
            });
            MessageBox box = asked.box;
            if (box.title == kTitle) {
                box.title.clear();
            }
            QCOMPARE(boxes.show(box), closed(box.buttons));
            QVERIFY(seen);
        }
    }

private:
    static BoxAnswer closed(BoxButtons buttons)
    {
        switch (buttons) {
        case BoxButtons::YesNo:
            return BoxAnswer::No;
        case BoxButtons::YesNoCancel:
            return BoxAnswer::Cancel;
        case BoxButtons::Ok:
            break;
        }
        return BoxAnswer::Ok;
    }

    static void compareWindow(const QMessageBox& window, const MessageBox& box)
    {
        const QMap<BoxIcon, QMessageBox::Icon> icons = {{BoxIcon::None, QMessageBox::NoIcon},
                                                        {BoxIcon::Information, QMessageBox::Information},
                                                        {BoxIcon::Question, QMessageBox::Question},
                                                        {BoxIcon::Exclamation, QMessageBox::Warning},
                                                        {BoxIcon::Critical, QMessageBox::Critical}};
        const QMap<BoxButtons, QStringList> captions = {{BoxButtons::Ok, {"OK"}},
                                                        {BoxButtons::YesNo, {"Yes", "No"}},
                                                        {BoxButtons::YesNoCancel, {"Yes", "No", "Cancel"}}};
        const QMap<BoxAnswer, QString> answers = {
            {BoxAnswer::Ok, "OK"}, {BoxAnswer::Yes, "Yes"}, {BoxAnswer::No, "No"}, {BoxAnswer::Cancel, "Cancel"}};
        const auto caption = [](const QAbstractButton* button) { return button->text().remove('&'); };
        QCOMPARE(window.text(), platform::toQString(box.text));
        QCOMPARE(window.textFormat(), Qt::PlainText);
        QCOMPARE(window.windowTitle(), platform::toQString(box.title));
        QCOMPARE(window.icon(), icons[box.icon]);
        QStringList shown;
        for (const QAbstractButton* button : window.buttons()) {
            shown << caption(button);
        }
        shown.sort();
        QStringList expected = captions[box.buttons];
        expected.sort();
        QCOMPARE(shown, expected);
        QCOMPARE(caption(window.defaultButton()), answers[box.defaultButton]);
        QCOMPARE(caption(window.escapeButton()), answers[closed(box.buttons)]);
    }
};

static const testsupport::RunnableTest<MessageTextsTest> kRunnable;
#include "MessageTextsTest.moc"
