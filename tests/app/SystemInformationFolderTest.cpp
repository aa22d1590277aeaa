#include "app/dialogs/frmAbout.h"
#include "platform/qt/PathText.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SystemTools.h"
#include "tests/support/TestMessageBoxes.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr std::uint32_t kTextWithVariables = 2; // as the registry numbers it
const std::string kToolPath = R"(SOFTWARE\Microsoft\Shared Tools\MSINFO|PATH)";
const std::string kToolFolder = R"(SOFTWARE\Microsoft\Shared Tools Location|MSINFO)";

} // namespace

// What the registry says of the system-information tool with names of variables in it comes as it is stored: not
// replaced, and with its terminator.
class SystemInformationFolderTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    platform::DosNames m_names{platform::toPath(m_folder.path())};
    testsupport::FakeRegistry m_registry;
    testsupport::RecordingStart m_programs;
    testsupport::TestMessageBoxes m_boxes;

    void startTool()
    {
        app::frmAbout box(m_registry, m_programs, m_names, m_boxes, nullptr);
        box.StartSysInfo();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(QDir(m_folder.path()).mkpath(QStringLiteral("c:/Program Files/Tools")));
        QFile tool(m_folder.filePath(QStringLiteral("c:/Program Files/Tools/msinfo32.exe")));
        QVERIFY(tool.open(QIODevice::WriteOnly));
        m_programs.variables = {{"%ProgramFiles%", R"(C:\Program Files)"}};
    }
    void init()
    {
        m_programs.started.clear();
        m_registry.values.clear();
    }

    void theFolder_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::newRow("with a terminator") << QByteArray(R"(%ProgramFiles%\Tools)") + '\0';
        QTest::newRow("with two") << QByteArray(R"(%ProgramFiles%\Tools)") + '\0' + '\0';
        QTest::newRow("with something behind it") << QByteArray(R"(%ProgramFiles%\Tools)") + '\0' + "old";
        QTest::newRow("without") << QByteArray(R"(%ProgramFiles%\Tools)");
        QTest::newRow("without variables") << QByteArray(R"(C:\Program Files\Tools)") + '\0';
    }
    void theFolder()
    {
        QFETCH(QByteArray, stored);
        m_registry.values[kToolFolder] = {.type = kTextWithVariables, .bytes = stored.toStdString()};
        startTool();
        QVERIFY(m_programs.started == std::vector<std::string>{R"(C:\Program Files\Tools\MSINFO32.EXE)"});
        QVERIFY(m_boxes.shown.empty());
    }

    void theTool()
    {
        m_registry.values[kToolPath] = {.type = kTextWithVariables,
                                        .bytes = std::string(R"(%ProgramFiles%\a.exe)") + '\0' + "old"};
        startTool();
        QVERIFY(m_programs.started == std::vector<std::string>{R"(%ProgramFiles%\a.exe)"});
    }

    void aFolderThatIsNotThere()
    {
        m_registry.values[kToolFolder] = {.type = kTextWithVariables,
                                          .bytes = std::string(R"(%ProgramFiles%\Nowhere)") + '\0'};
        m_boxes.expect(platform::BoxAnswer::Ok);
        startTool();
        QVERIFY(m_programs.started.empty());
        QCOMPARE(QByteArray::fromStdString(m_boxes.lastText()), "System Information Is Unavailable At This Time");
    }
};

static const testsupport::RunnableTest<SystemInformationFolderTest> kRunnable;
#include "SystemInformationFolderTest.moc"
