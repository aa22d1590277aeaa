#include "app/settings/ProgramFolders.h"
#include "app/settings/LanguageList.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>
#include <optional>
#include <string>

namespace fs = std::filesystem;

// A program in a folder bin, and what lies around it.
class ProgramFoldersTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_root;

    [[nodiscard]] fs::path at(const char* name) const { return fs::path(m_root.path().toStdString()) / name; }

    void lay(const char* name, const QByteArray& bytes) const
    {
        QVERIFY(QDir(m_root.path()).mkpath(QString::fromStdString(fs::path(name).parent_path().string())));
        QFile file(m_root.filePath(QString::fromLatin1(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    [[nodiscard]] std::string layout() const
    {
        files::KeyboardLanguage language;
        return app::lookUpLanguage(at("bin"), "0409", language).value_or("(as it was)");
    }

private slots:
    void init()
    {
        QVERIFY(QDir(m_root.path()).removeRecursively());
        QVERIFY(QDir().mkpath(m_root.filePath(QStringLiteral("bin"))));
    }

    void noList() { QCOMPARE(layout(), std::string("(as it was)")); }

    void installedList()
    {
        lay("share/teslin-configure/Languages.txt", "0409%;+? Installed (US)\r\n");
        QCOMPARE(layout(), std::string("Installed (Code: 0409)"));
    }

    void theListBesideTheProgramIsFirst()
    {
        lay("share/teslin-configure/Languages.txt", "0409%;+? Installed (US)\r\n");
        lay("bin/Languages.txt", "0409%;+? Beside (US)\r\n");
        QCOMPARE(layout(), std::string("Beside (Code: 0409)"));
        // It counts alone, also for what it does not hold.
        lay("bin/Languages.txt", "0407%;+? Beside (US)\r\n");
        QCOMPARE(layout(), std::string("(as it was)"));
    }

    // One that is there and cannot be read counts as none, whatever was installed.
    void aListThatCannotBeReadIsNone()
    {
        lay("share/teslin-configure/Languages.txt", "0409%;+? Installed (US)\r\n");
        QVERIFY(QDir().mkpath(m_root.filePath(QStringLiteral("bin/Languages.txt"))));
        files::KeyboardLanguage language;
        language.Track1Start = "%";
        QVERIFY(!app::lookUpLanguage(at("bin"), "0409", language).has_value());
        QCOMPARE(language.name, std::string("Unknown"));
        QCOMPARE(language.Track1Start, std::string("%"));
    }

    void settingsBesideTheProgram()
    {
        QCOMPARE(app::GetIniFileName(at("bin/TeslinConfigure"), at("home/.config/TeslinConfigure")),
                 at("bin/TeslinConfigure.INI"));
    }

    void settingsOfAnInstalledProgram()
    {
        lay("share/teslin-configure/Languages.txt", "");
        QCOMPARE(app::GetIniFileName(at("bin/TeslinConfigure"), at("home/.config/TeslinConfigure")),
                 at("home/.config/TeslinConfigure/TeslinConfigure.INI"));
        // Without a folder of the user's own.
        QCOMPARE(app::GetIniFileName(at("bin/TeslinConfigure"), {}), at("bin/TeslinConfigure.INI"));
        QVERIFY(!fs::exists(at("home")));
        QVERIFY(!fs::exists(at("bin/TeslinConfigure.INI")));
    }
};

static const testsupport::RunnableTest<ProgramFoldersTest> kRunnable;
#include "ProgramFoldersTest.moc"
