#include "simulator/CommandLine.h"
#include "tests/documents/Document.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <string>
#include <vector>

using namespace documents;

namespace {

// The blocks of code in the documents, each with what it is held against.
enum class Kind { Simulator, Program, Swipe, Shell, Package, Login };
const QHash<QString, Kind> kCommands = {
    {"sudo apt install ./teslin-tools_" TESLIN_VERSION "-1_amd64.deb ./teslin-configure_" TESLIN_VERSION "-1_amd64.deb",
     Kind::Package},
    {"ksd-simulator --dosdevices ~/.teslin/dosdevices", Kind::Simulator},
    {"teslin-swipe-card bank", Kind::Swipe},
    {"mkdir -p ~/.teslin/dosdevices \"$HOME/.teslin/dosdevices/c:/Windows/system32/drivers\"", Kind::Shell},
    {"ln -s /dev/ttyUSB0 ~/.teslin/dosdevices/com5", Kind::Shell},
    {"touch \"$HOME/.teslin/dosdevices/c:/Windows/system32/drivers/Teslin.sys\"", Kind::Shell},
    {"printf '%15sCOM5' '' > ~/.teslin/dosdevices/teslin", Kind::Shell},
    {"sudo adduser \"$USER\" dialout", Kind::Login},
    {"TeslinConfigure [R]", Kind::Program},
    {"TeslinConfigure --help", Kind::Program},
    {"TeslinConfigure --version", Kind::Program},
};

QStringList codeLinesOf(const QStringList& names)
{
    QStringList lines;
    for (const QString& name : names) {
        lines += Document(readSource(name)).codeLines();
    }
    return lines;
}

QString faultOfSimulator(const QString& command)
{
    std::vector<std::string> words;
    for (const QString& word : command.split(u' ').mid(1)) {
        words.push_back(word.toStdString());
    }
    const std::vector<std::string_view> arguments(words.begin(), words.end());
    simulator::CommandLine read;
    return QString::fromStdString(simulator::parseCommandLine(arguments, read).error);
}

// Links of a document that lead nowhere. Links go from the document's own folder.
QStringList faultsOfLinks(const QString& folder, const Document& document)
{
    QStringList faults;
    for (const QString& target : document.targets()) {
        const QString file = target.section(u'#', 0, 0);
        const QString place = target.section(u'#', 1);
        const QString name = folder + u'/' + file;
        if (!file.isEmpty() && !QFileInfo(testsupport::sourceFile(name)).isFile()) {
            faults.append(target + " is not there");
            continue;
        }
        const Document other = file.isEmpty() ? document : Document(readSource(name));
        if (!place.isEmpty() && !other.places().contains(place)) {
            faults.append(target + " leads to no place");
        }
    }
    return faults;
}

} // namespace

// The commands, links and pictures of the documents.
class CommandsAndLinksTest final : public QObject
{
    Q_OBJECT

private slots:
    void everyCommandIsKnown()
    {
        const QStringList lines = codeLinesOf(userDocuments());
        for (const QString& line : lines) {
            QVERIFY2(kCommands.contains(line), qPrintable(line));
        }
        for (auto command = kCommands.keyBegin(); command != kCommands.keyEnd(); ++command) {
            QVERIFY2(lines.contains(*command), qPrintable(*command + " is in no document"));
        }
    }

    void theSimulatorTakesItsCommands()
    {
        QStringList commands;
        for (const QString& name : userDocuments()) {
            const Document document(readSource(name));
            for (const QString& command : document.codeLines() + document.codePieces()) {
                if (command.startsWith("ksd-simulator ")) {
                    commands.append(command);
                }
            }
        }
        QVERIFY(commands.size() >= 3);
        for (const QString& command : commands) {
            QVERIFY2(faultOfSimulator(command).isEmpty(), qPrintable(command + ": " + faultOfSimulator(command)));
        }
        QVERIFY(!faultOfSimulator("ksd-simulator --dosdevice x").isEmpty());
    }

    // Options that stand alone in the text.
    void everyOptionIsOneOfTheSimulatorsOrThePrograms()
    {
        const QString known = QString::fromStdString(simulator::helpText()) + readSource("scripts/swipe-card");
        int seen = 0;
        for (const QString& name : userDocuments()) {
            for (const QString& piece : Document(readSource(name)).codePieces()) {
                if (piece.startsWith("--")) {
                    QVERIFY2(known.contains(piece), qPrintable(piece));
                    ++seen;
                }
            }
        }
        QVERIFY(seen >= 5);
    }

    // What is typed for a port of this machine makes the names that the program looks for.
    void theNamesOfAPortOfThisMachine()
    {
#ifdef Q_OS_WIN
        QSKIP("These commands are for Linux.");
#else
        QTemporaryDir home;
        for (const QString& line : codeLinesOf({"docs/guide.md"})) {
            if (kCommands.value(line) == Kind::Shell) {
                QProcess shell;
                QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
                environment.insert("HOME", home.path());
                shell.setProcessEnvironment(environment);
                shell.start("bash", {"-c", line});
                QVERIFY(shell.waitForFinished());
                QCOMPARE(shell.exitCode(), 0);
            }
        }
        const QDir names(home.filePath(".teslin/dosdevices"));
        QCOMPARE(QFile::symLinkTarget(names.filePath("com5")), "/dev/ttyUSB0");
        QVERIFY(QFileInfo(names.filePath("c:/Windows/system32/drivers/Teslin.sys")).isFile());
        QFile device(names.filePath("teslin"));
        QVERIFY(device.open(QIODevice::ReadOnly));
        const QByteArray question = "/get port_name\n"; // what the program writes over its beginning
        QCOMPARE(device.readAll(), QByteArray(question.size(), ' ') + "COM5");
#endif
    }

    void theSwipeCommandNamesACard()
    {
        const QString card = QString("teslin-swipe-card bank").section(u' ', 1);
        QCOMPARE(faultOfSimulator("ksd-simulator --type-card " + card), "");
        QVERIFY(readSource("packaging/linux/CMakeLists.txt").contains("RENAME teslin-swipe-card"));
    }

    void everyLinkLeadsSomewhere_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString& name : userDocuments() + QStringList{"README.md"}) {
            QTest::newRow(qPrintable(name)) << name;
        }
    }
    void everyLinkLeadsSomewhere()
    {
        QFETCH(QString, name);
        // The package's README lies above the documents, as the project's own does.
        const QString folder = name.startsWith("docs/") ? "docs" : ".";
        QCOMPARE(faultsOfLinks(folder, Document(readSource(name))).join(u'\n'), "");
    }

    void everyPictureIsShownAndTold()
    {
        QStringList shown;
        for (const QString& name : QDir(testsupport::sourceFile("docs")).entryList({"*.md"})) {
            const Document document(readSource("docs/" + name));
            for (const QString& target : document.targets()) {
                shown.append(target);
            }
            QVERIFY2(!document.text().contains("![]("), qPrintable(name + " has a picture without words"));
        }
        for (const QString& picture : QDir(testsupport::sourceFile("docs/pictures")).entryList({"*.png"})) {
            QVERIFY2(shown.contains("pictures/" + picture), qPrintable(picture + " is shown nowhere"));
        }
    }

    // --- That the checks themselves can fail ---

    void aLinkThatLeadsNowhereIsFound_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");
        QTest::newRow("place") << "## A b\n\n[x](#a-b)" << false;
        QTest::newRow("no such place") << "## A b\n\n[x](#a-c)" << true;
        QTest::newRow("file") << "[x](guide.md)" << false;
        QTest::newRow("no such file") << "[x](guid.md)" << true;
        QTest::newRow("place in a file") << "[x](guide.md#files)" << false;
        QTest::newRow("no such place in a file") << "[x](guide.md#flies)" << true;
        QTest::newRow("no such picture") << "![x](pictures/none.png)" << true;
    }
    void aLinkThatLeadsNowhereIsFound()
    {
        QFETCH(QString, text);
        QTEST(!faultsOfLinks("docs", Document(text)).isEmpty(), "found");
    }
};

static const testsupport::RunnableTest<CommandsAndLinksTest> kRunnable;
#include "CommandsAndLinksTest.moc"
