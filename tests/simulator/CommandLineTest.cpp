#include "simulator/CommandLine.h"
#include "simulator/FaultRule.h"
#include "simulator/FaultRules.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace simulator;

namespace {

Verdict parse(const std::vector<std::string_view>& arguments, CommandLine& commandLine)
{
    return parseCommandLine(arguments, commandLine);
}

} // namespace

class CommandLineTest final : public QObject
{
    Q_OBJECT

private slots:
    void theFolderIsEnough()
    {
        CommandLine line;
        QVERIFY(parse({"--dosdevices", "/tmp/dos"}, line));
        QVERIFY(line.wish == CommandLine::Wish::Run);
        QCOMPARE(line.dosDevices, std::string("/tmp/dos"));
        QCOMPARE(line.name, std::string("teslin"));
        QCOMPARE(line.port, 5);
        QCOMPARE(line.portEntry(), std::string("com5"));
        QVERIFY(line.memoryFile.empty());
        QVERIFY(line.saveMemoryFile.empty());
        QVERIFY(line.logFile.empty());
        QVERIFY(!line.verbose);
        QVERIFY(line.faults.empty());
    }

    void everyOptionIsRead()
    {
        CommandLine line;
        QVERIFY(parse({"--port=12", "--name", "MyReader", "--memory", "m", "--save-memory=s", "--log", "l", "--verbose",
                       "--fault", "/ver: silent", "--fault=/x: reply=\"a=b\"", "--dosdevices=d"},
                      line));
        QCOMPARE(line.dosDevices, std::string("d"));
        QCOMPARE(line.name, std::string("myreader"));
        QCOMPARE(line.portEntry(), std::string("com12"));
        QCOMPARE(line.memoryFile, std::string("m"));
        QCOMPARE(line.saveMemoryFile, std::string("s"));
        QCOMPARE(line.logFile, std::string("l"));
        QVERIFY(line.verbose);
        QVERIFY((line.faults == std::vector<std::string>{"/ver: silent", "/x: reply=\"a=b\""}));
    }

    void helpAndVersionWin()
    {
        CommandLine line;
        QVERIFY(parse({"--help", "--nonsense"}, line));
        QVERIFY(line.wish == CommandLine::Wish::ShowHelp);
        QVERIFY(parse({"--verbose", "--version"}, line));
        QVERIFY(line.wish == CommandLine::Wish::ShowVersion);
    }

    // A card is typed without any folder: nothing is simulated then.
    void cards()
    {
        CommandLine line;
        QVERIFY(parse({"--type-card", "credit"}, line));
        QVERIFY(line.wish == CommandLine::Wish::TypeCard);
        QCOMPARE(line.card, std::string("credit"));
        QVERIFY(parse({"--type-card=list"}, line));
        QVERIFY(line.wish == CommandLine::Wish::ListCards);
        QVERIFY(parse({"--type-card=credit", "--dosdevices=dir", "--port=7"}, line));
        QCOMPARE(line.dosDevices, std::string("dir"));
        QCOMPARE(line.portEntry(), std::string("com7"));
        QVERIFY(parse({"--memory", "values", "--type-card=credit"}, line));
        QCOMPARE(line.memoryFile, std::string("values"));
        QVERIFY(parse({"--type-card=credit", "--help"}, line));
        QVERIFY(line.wish == CommandLine::Wish::ShowHelp);
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("error");
        const auto row = [](const char* arguments, const char* error) {
            QTest::newRow(arguments) << QString::fromLatin1(arguments).split(QLatin1Char('|'), Qt::SkipEmptyParts)
                                     << QByteArray(error);
        };
        const char* const name = "--name wants a plain name without blanks, slashes, colons or a dot in front";
        row("", "--dosdevices is missing");
        row("--verbose", "--dosdevices is missing");
        row("--dosdevices", "--dosdevices wants a value");
        row("--dosdevices|--verbose", "--dosdevices wants a value");
        row("--dosdevices=", "--dosdevices wants a value that is not empty");
        row("--log=|--dosdevices|d", "--log wants a value that is not empty");
        row("--memory", "--memory wants a value");
        row("--save-memory", "--save-memory wants a value");
        row("--fault", "--fault wants a value");
        row("--dosdevices|a|--dosdevices|b", "--dosdevices is given twice");
        row("--port|5|--port=6", "--port is given twice");
        row("--port", "--port wants a value");
        row("--port=0", "--port wants a number from 1 to 256");
        row("--port=257", "--port wants a number from 1 to 256");
        row("--port=5x", "--port wants a number from 1 to 256");
        row("--port=COM5", "--port wants a number from 1 to 256");
        row("--port|-5", "--port wants a number from 1 to 256");
        row("--name=", name);
        row("--name=a/b", name);
        row("--name=a\\b", name);
        row("--name=..", name);
        row("--name=.hidden", name);
        row("--name=c:", name);
        row("--name=a b", name);
        row("--dosdevices|d|--name=COM7|--port=7", "--name and --port mean the same entry 'com7'");
        row("--type-card", "--type-card wants a value");
        row("--type-card=", "no sample card ''; --type-card list names them");
        row("--type-card=Credit", "no sample card 'Credit'; --type-card list names them");
        row("--type-card|credit|--type-card|bank", "--type-card is given twice");
        row("--type-card=credit|--memory=a|--dosdevices=b", "--dosdevices and --memory name two readers for one card");
        row("--type-card|credit|--speed", "unknown argument '--speed'");
        row("--verbose=1", "unknown argument '--verbose=1'");
        row("--speed|9600", "unknown argument '--speed'");
        row("-h", "unknown argument '-h'");
        row("/tmp/dos", "unknown argument '/tmp/dos'");
        row("--Port=5", "unknown argument '--Port=5'");
    }
    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, error);
        std::vector<std::string> texts;
        for (const QString& argument : arguments) {
            texts.push_back(argument.toStdString());
        }
        CommandLine line;
        line.logFile = "as it was";
        QCOMPARE(QByteArray::fromStdString(parse({texts.begin(), texts.end()}, line).error), error);
        QCOMPARE(line.logFile, std::string("as it was"));
    }

    void theHelpNamesEveryOptionAndEveryFault()
    {
        const std::string help = helpText();
        for (const char* const option :
             {"--dosdevices DIR", "--name NAME", "--port N", "--memory FILE", "--save-memory FILE", "--log FILE",
              "--verbose", "--fault RULE", "--type-card NAME", "--help", "--version"}) {
            QVERIFY2(help.find(std::string("\n  ") + option + " ") != std::string::npos, option);
        }
        QCOMPARE(faultWords().size(), std::size_t{16});
        for (const FaultWord& word : faultWords()) {
            QVERIFY2(help.find("\n  " + std::string(word.form) + " ") != std::string::npos, word.form.data());
        }
    }

    void theExamplesOfTheHelpAreGoodRules()
    {
        int examples = 0;
        for (const QString& line : QString::fromStdString(helpText()).split(QLatin1Char('\n'))) {
            if (!line.startsWith(QLatin1String("  --fault '"))) {
                continue;
            }
            FaultRules rules;
            const Verdict verdict = rules.add(line.section(QLatin1Char('\''), 1, 1).toStdString());
            QVERIFY2(verdict, qPrintable(line + QLatin1String(" -> ") + QString::fromStdString(verdict.error)));
            ++examples;
        }
        QCOMPARE(examples, 10);
    }

    void theHelpFitsATerminal()
    {
        for (const QString& line : QString::fromStdString(helpText()).split(QLatin1Char('\n'))) {
            QVERIFY2(line.size() <= 90, qPrintable(line));
        }
    }
};

static const testsupport::RunnableTest<CommandLineTest> kRunnable;
#include "CommandLineTest.moc"
