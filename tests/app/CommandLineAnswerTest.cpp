#include "app/startup/CommandLineAnswer.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QByteArrayList>
#include <QTest>

#include <vector>

namespace {

QByteArray answer(const QByteArrayList& arguments)
{
    std::vector<const char*> texts;
    for (const QByteArray& argument : arguments) {
        texts.push_back(argument.constData());
    }
    return QByteArray::fromStdString(app::answerToCommandLine(texts).value_or("(the program starts)"));
}

} // namespace

class CommandLineAnswerTest final : public QObject
{
    Q_OBJECT

private slots:
    void theProgramStarts_data()
    {
        QTest::addColumn<QByteArrayList>("arguments");
        const auto row = [](const QByteArrayList& arguments) {
            QTest::newRow(arguments.join(' ').constData()) << arguments;
        };
        row({});
        row({"R"});
        row({"rhelp"});
        row({"help"});
        row({"-help"});
        row({"--Help"});
        row({"--helpful"});
        row({"--version=1"});
        row({"--nonsense", "-v"});
    }
    void theProgramStarts()
    {
        QFETCH(QByteArrayList, arguments);
        QCOMPARE(answer(arguments), QByteArray("(the program starts)"));
    }

    void version() { QCOMPARE(answer({"--version"}), QByteArray("TeslinConfigure 1.4.1\n")); }

    void helpTellsEverything_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const char* const text :
             {"Usage: TeslinConfigure [R]\n", "\n  R ", "\n  --help ", "\n  --version ", "\n  TESLIN_DOSDEVICES\n",
              "~/.teslin/dosdevices", "\n  TeslinConfigure.INI\n", "\n  Languages.txt\n"}) {
            QTest::newRow(text) << QByteArray(text);
        }
    }
    void helpTellsEverything()
    {
        QFETCH(QByteArray, text);
        QVERIFY(answer({"--help"}).contains(text));
    }

    void helpFitsATerminal()
    {
        const QByteArray help = answer({"--help"});
        QVERIFY(help.endsWith(".\n"));
        for (const QByteArray& line : help.split('\n')) {
            QVERIFY2(line.size() <= 80, line.constData());
            QVERIFY2(!line.endsWith(' '), line.constData());
            for (const char c : line) {
                QVERIFY2(c >= ' ' && c <= '~', line.constData());
            }
        }
    }

    void theFirstOneCounts()
    {
        QVERIFY(answer({"R", "--nonsense", "--help", "--version"}).startsWith("Usage: "));
        QVERIFY(answer({"--version", "--help"}).startsWith("TeslinConfigure "));
    }
};

static const testsupport::RunnableTest<CommandLineAnswerTest> kRunnable;
#include "CommandLineAnswerTest.moc"
