#include "cli/Failure.h"
#include "cli/TableFiles.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using cli::Table;

namespace {

QByteArray golden(const char* name)
{
    QFile file(testsupport::sourceFile(QStringLiteral("tests/files/golden/") + QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray doubtsOf(const cli::TableContent& content)
{
    QByteArray text;
    for (const cli::Doubt& doubt : content.doubts) {
        text += QByteArray::number(doubt.line) + (doubt.isLeftOut ? " out: " : " in: ") +
                QByteArray::fromStdString(doubt.reason) + '\n';
    }
    return text;
}

} // namespace

Q_DECLARE_METATYPE(Table)

// What is refused in a file before anything is done with it.
class TableDoubtsTest final : public QObject
{
    Q_OBJECT

private slots:
    void filesOfTheProgramAreBelieved_data()
    {
        QTest::addColumn<Table>("table");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("count");
        QTest::newRow("factory tlc") << Table::Configuration << golden("FactoryDefaults.tlc") << 27;
        QTest::newRow("factory txt") << Table::KeyboardLanguage << golden("FactoryDefaults.txt") << 149;
        QTest::newRow("one row") << Table::Configuration << QByteArray("Comments,\r\n013,95 ;\r\n") << 1;
        QTest::newRow("a long comment") << Table::Configuration
                                        << "Comments," + QByteArray(400, 'x') + "\r\n013,95 ;\r\n"
                                        << 1;
        QTest::newRow("a marked line") << Table::Configuration << QByteArray("Comments,\r\n;more\r\n013,95 ;\r\n") << 1;
        QTest::newRow("empty lines") << Table::Configuration << QByteArray("Comments,\r\n\r\n013,95 ;\r\n\r\n") << 1;
        QTest::newRow("line feeds alone") << Table::Configuration << QByteArray("Comments,\n013,95 ;x\n") << 1;
        QTest::newRow("no notes, an empty line behind") << Table::KeyboardLanguage << QByteArray("080,00\r\n\r\n") << 1;
        QTest::newRow("commented") << Table::KeyboardLanguage << QByteArray(";a\n\r\n080,00 ;Keyboard flags\r\n") << 1;
        QTest::newRow("a comma in a pair's notes")
            << Table::KeyboardLanguage << QByteArray("0A3,00,33 ;2C, USA KB key -> , \r\n") << 2;
    }
    void filesOfTheProgramAreBelieved()
    {
        QFETCH(Table, table);
        QFETCH(QByteArray, bytes);
        QFETCH(int, count);
        QVERIFY(!bytes.isEmpty());
        const cli::TableContent content = cli::readTable(table, bytes.toStdString());
        QCOMPARE(doubtsOf(content), QByteArray());
        QCOMPARE(static_cast<int>(content.values.size()), count);
    }

    void doubts_data()
    {
        QTest::addColumn<Table>("table");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("doubt"); // how the only one begins
        const auto cfg = [](const char* name, const QByteArray& line, const char* doubt) {
            QTest::newRow(name) << Table::Configuration << "Comments,\r\n014,63 ;\r\n" + line + "\r\n"
                                << QByteArray(doubt);
        };
        cfg("no value", "013,", "3 out: \"013,\" is no row");
        cfg("one digit", "013,9", "3 out: \"013,9\" is no row");
        cfg("three digits", "013,955 ;", "3 in: \"013,955 ;\" is no row");
        cfg("not hexadecimal", "013,9Z ;", "3 out: \"013,9Z ;\" is no row");
        cfg("small letters", "01A,1f ;", "3 in: \"01A,1f ;\" is no row");
        cfg("a small address", "01a,12 ;", "3 out: \"01a,12 ;\" is no row");
        cfg("another separator", "013;95", "3 out: \"013;95\" is no row");
        cfg("a blank before the value", "013, 95 ;", "3 out: \"013, 95 ;\" is no row");
        cfg("no such parameter", "02B,00 ;", "3 out: the Configuration table has no row 02B");
        cfg("of the other table", "080,00 ;", "3 out: the Configuration table has no row 080");
        cfg("a pair", "013,95,00 ;", "3 in: row 013 has one value");
        cfg("the same again", "014,62 ;", "3 out: a parameter of this line is given in line 2 already");
        cfg("some text", "Hello, world", "3 out: \"Hello, world\" is no row");
        cfg("bytes", QByteArray("\x01\xFF,\0", 4), "3 out: \"..,.\" is no row");
        QTest::newRow("no comment line") << Table::Configuration << QByteArray("013,95 ;\r\n014,63 ;\r\n")
                                         << QByteArray("1 out: the first line does not begin");
        QTest::newRow("cut short") << Table::Configuration << QByteArray("Comments,\r\n013,95")
                                   << QByteArray("2 in: the last line has no end");
        QTest::newRow("empty") << Table::Configuration << QByteArray() << QByteArray("0 out: no parameter");
        QTest::newRow("only a comment") << Table::Configuration << QByteArray("Comments,x\r\n")
                                        << QByteArray("0 out: no parameter");
        const auto kb = [](const char* name, const QByteArray& line, const char* doubt) {
            QTest::newRow(name) << Table::KeyboardLanguage << "080,00 ;x\r\n" + line + "\r\n" << QByteArray(doubt);
        };
        kb("a comment's second line", "second line", "2 out: \"second line\" is no row");
        kb("a pair's second address", "084,20,03 ;x", "2 out: the Keyboard Language table has no row 084");
        kb("half a pair", "083,20 ;x", "2 out: row 083-084 has two values");
        kb("flags twice", "080,01 ;x", "2 out: a parameter of this line is given in line 1 already");
        kb("behind the last", "115,00,00 ;x", "2 out: the Keyboard Language table has no row 115");
        kb("no text behind the mark", "083,20,03 ;", "2 out: the window leaves this line out");
        QTest::newRow("a comma in the flags' notes")
            << Table::KeyboardLanguage << QByteArray("083,20,03 ;x\r\n080,00 ;a, b\r\n")
            << QByteArray("2 out: the window leaves this line out");
    }
    void doubts()
    {
        QFETCH(Table, table);
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, doubt);
        const QByteArray found = doubtsOf(cli::readTable(table, bytes.toStdString()));
        QVERIFY2(found.startsWith(doubt), found.constData());
        QCOMPARE(found.count('\n'), 1);
    }

    void lenientTakesTheFirstOfTwoAndWhatTheWindowReads()
    {
        const auto content =
            cli::readTable(Table::Configuration, "Comments,\r\n013,9a\r\n013,11 ;\r\nrubbish\r\n02D,0");
        QCOMPARE(content.values.size(), std::size_t{1});
        QCOMPARE(int{content.values.at("013")}, 0x9A);
        QCOMPARE(doubtsOf(content).count(" out: "), 3);
    }

    void refusedWithFileLineAndReason()
    {
        const QTemporaryDir folder;
        const QString name = folder.filePath("bad.tlc");
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("Comments,\r\n013,95 ;\r\n014,6 ;\r\n");
        file.close();
        try {
            static_cast<void>(cli::readTableFile(name.toStdString(), {}));
            QFAIL("believed");
        } catch (const cli::Failure& failure) {
            QCOMPARE(static_cast<int>(failure.exit()), 5);
            QCOMPARE(QByteArray(failure.what()),
                     name.toLocal8Bit() + ", line 3: \"014,6 ;\" is no row of a Configuration table");
        }
        const auto lenient = cli::readTableFile(name.toStdString(), {.isLenient = true});
        QCOMPARE(lenient.content.values.size(), std::size_t{1});
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(cli::readTableFile("/nonexistent/x.tlc", {.isLenient = true})),
                                 cli::Failure);
    }

    void roundTrip()
    {
        for (const Table table : {Table::Configuration, Table::KeyboardLanguage}) {
            const cli::Values factory = cli::factoryValues({});
            const std::string bytes = cli::fileBytes(table, cli::tableOf(table, factory));
            QCOMPARE(QByteArray::fromStdString(bytes),
                     golden(table == Table::Configuration ? "FactoryDefaults.tlc" : "FactoryDefaults.txt"));
        }
    }
};

static const testsupport::RunnableTest<TableDoubtsTest> kRunnable;
#include "TableDoubtsTest.moc"
