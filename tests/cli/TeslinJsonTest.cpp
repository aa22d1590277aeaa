#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

namespace {

QByteArray sourceText(const char* name)
{
    QFile file(testsupport::sourceFile(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// What the schema's checker says against a document; empty when nothing.
QByteArray objectionTo(const QByteArray& document)
{
    QProcess checker;
    checker.start(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-c"),
         QStringLiteral("import json, sys, jsonschema\n"
                        "schema = json.load(open(sys.argv[1]))\n"
                        "jsonschema.Draft202012Validator.check_schema(schema)\n"
                        "jsonschema.validate(json.load(sys.stdin), schema, jsonschema.Draft202012Validator)\n"),
         testsupport::sourceFile(QStringLiteral("docs/teslin.schema.json"))});
    checker.write(document);
    checker.closeWriteChannel();
    const CliDesk::Outcome outcome = CliDesk::end(checker);
    return outcome.exitCode == 0 ? QByteArray() : "objection: " + outcome.errors;
}

} // namespace

// Documents against their schema, docs/teslin.schema.json.
class TeslinJsonTest final : public QObject
{
    Q_OBJECT

private slots:
    void answers_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        const auto row = [](const char* command, int exitCode) {
            QTest::newRow(command) << QString(command).split(' ') << exitCode;
        };
        row("info", 0);
        row("get 013 114", 0);
        row("set 013=96", 0);
        row("set 013=96 --dry-run", 1);
        row("set 001=00", 2);
        row("retrieve", 0);
        row("retrieve -o a.tlc -o b.txt", 0);
        row("verify w.tlc", 1);
        row("verify w.txt", 0);
        row("diff defaults reader", 1);
        row("diff w.tlc w.tlc", 0);
        row("update w.tlc", 0);
        row("update w.tlc --dry-run", 1);
        row("update sick.tlc", 4);
        row("update bad.tlc", 5);
        row("summary reader", 0);
        row("show", 0);
        row("show 080 013 083 001", 0);
        row("doctor", 0);
        row("doctor --name Nobody", 3);
        row("batch w.tlc --count 1", 0);
        row("batch sick.tlc --count 1", 1);
        row("info --port 9", 3);
        row("get 020", 4);
        row("polish", 2);
    }
    void answers()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        CliDesk desk;
        QVERIFY(desk.write("w.tlc", "Comments,\r\n013,96 ;\r\n"));
        QVERIFY(desk.write("w.txt", "083,20,03 ;\x95 and \xE4\r\n"));
        QVERIFY(desk.write("sick.tlc", "Comments,\r\n013,96 ;\r\n021,11 ;\r\n"));
        QVERIFY(desk.write("bad.tlc", "Comments,\r\n013,96\xE4\r\n"));
        QStringList faults;
        if (arguments.contains("020")) {
            faults << "/rawxact WPV020: silent";
        }
        if (arguments.contains("sick.tlc")) {
            faults << "/rawxact WPV021: silent on=2-";
        }
        QVERIFY(desk.startReader(faults));
        const CliDesk::Outcome outcome = desk.run(QStringList{"--json"} + arguments);
        QVERIFY2(outcome.exitCode == exitCode, outcome.output + outcome.errors);
        QCOMPARE(outcome.json()["exit"].toInt(-1), exitCode);
        QCOMPARE(objectionTo(outcome.output), QByteArray());
    }

    void theSchemaRefuses_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::newRow("nothing") << QByteArray("{}");
        QTest::newRow("another version") << QByteArray(R"({"schema": "teslin/2", "command": "get", "exit": 0})");
        QTest::newRow("another exit") << QByteArray(R"({"schema": "teslin/1", "command": "show", "exit": 9})");
        QTest::newRow("no parameters") << QByteArray(R"({"schema": "teslin/1", "command": "get", "exit": 0})");
        QTest::newRow("a value of one digit") << QByteArray(
            R"({"schema": "teslin/1", "command": "get", "exit": 0, "parameters": [{"address": "013", "value": "9"}]})");
    }
    void theSchemaRefuses()
    {
        QFETCH(QByteArray, document);
        QVERIFY(objectionTo(document).startsWith("objection: "));
    }

    void examplesInTheDocuments()
    {
        const QList<QByteArray> pieces = sourceText("docs/command-line.md").split('`');
        int count = 0;
        for (const QByteArray& piece : pieces) {
            if (piece.startsWith("json\n")) {
                ++count;
                QCOMPARE(objectionTo(piece.mid(5)), QByteArray());
            }
        }
        QCOMPARE(count, 4);
    }

    // Each command and option that --help tells of stands in the manual page and in both completions.
    void manualAndCompletionsKnowEverything()
    {
        const CliDesk desk;
        QStringList words;
        QStringList commands;
        static const QRegularExpression command(QStringLiteral("^  ([a-z][a-z-]+) {2,}"),
                                                QRegularExpression::MultilineOption);
        static const QRegularExpression option(QStringLiteral("--[a-z-]+"));
        const QString help = QString::fromUtf8(desk.run({"--help"}).output);
        for (auto match = command.globalMatch(help); match.hasNext();) {
            commands << match.next().captured(1);
        }
        QCOMPARE(commands.size(), 12);
        QStringList texts = {help};
        for (const QString& name : commands) {
            texts << QString::fromUtf8(desk.run({name, "--help"}).output);
            QVERIFY2(texts.last().contains("Example:\n  teslin " + name), qPrintable(texts.last()));
        }
        for (auto match = option.globalMatch(texts.join('\n')); match.hasNext();) {
            words << match.next().captured();
        }
        words += commands;
        words.removeDuplicates();
        QVERIFY(words.size() > 30);
        QByteArray manual = sourceText("packaging/linux/teslin.1");
        manual.replace("\\-", "-");
        const QByteArray bash = sourceText("packaging/completion/teslin.bash");
        const QByteArray zsh = sourceText("packaging/completion/_teslin");
        for (const QString& word : words) {
            for (const QByteArray& text : {manual, bash, zsh}) {
                QVERIFY2(text.contains(word.toUtf8()), qPrintable(word));
            }
        }
    }
};

static const testsupport::RunnableTest<TeslinJsonTest> kRunnable;
#include "TeslinJsonTest.moc"
