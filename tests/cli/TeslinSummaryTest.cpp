#include "TeslinProcess.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SourceFile.h"

#include <QDate>
#include <QFile>
#include <QJsonArray>
#include <QTest>

namespace {

// A report typed by hand, with today's date and perhaps a firmware version in its heading, as a file: with the line end
// that closes it.
QByteArray goldenReport(const char* name, const QByteArray& firmware = {})
{
    QFile file(testsupport::sourceFile(QStringLiteral("tests/report/golden/") + QLatin1String(name) + ".txt"));
    QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QByteArray title = "Brennic Teslin " + firmware;
    const QByteArray date = QDate::currentDate().toString(QStringLiteral("MM/dd/yyyy")).toLatin1();
    return title.rightJustified(54) + date + text.mid(text.indexOf("\r\n")) + "\r\n";
}

} // namespace

class TeslinSummaryTest final : public QObject
{
    Q_OBJECT

private slots:
    void ofAFile()
    {
        CliDesk desk;
        QVERIFY(desk.write("f.tlc", golden("FactoryDefaults.tlc")) &&
                desk.write("f.txt", golden("FactoryDefaults.txt")));
        QCOMPARE(desk.run({"summary", "f.tlc"}).output, goldenReport("configuration-defaults"));
        QCOMPARE(desk.run({"summary", "f.txt"}).output, goldenReport("keyboard-defaults"));
        QCOMPARE(desk.run({"summary", "f.tlc", "-o", "report.txt"}).output, QByteArray());
        QCOMPARE(desk.content("report.txt"), goldenReport("configuration-defaults"));
    }

    void ofTheReader()
    {
        CliDesk desk;
        QVERIFY(desk.startReader({}, {"081=00", "082=00"}));
        QCOMPARE(desk.run({"summary", "reader"}).output,
                 goldenReport("configuration-defaults", "3.07") + goldenReport("keyboard-defaults", "3.07"));
        QCOMPARE(desk.run({"--table", "kb", "summary", "reader"}).output, goldenReport("keyboard-defaults", "3.07"));
        QCOMPARE(desk.run({"summary", "reader", "-o", "both.txt"}).exitCode, 2);
        QCOMPARE(desk.files("both*"), QStringList());
    }

    void failures()
    {
        CliDesk desk;
        QCOMPARE(desk.run({"summary", "nowhere.tlc"}).exitCode, 5);
        QCOMPARE(desk.run({"summary", "reader"}).exitCode, 3);
        QCOMPARE(desk.run({"summary", "defaults", "--table", "cfg", "-o", "no/such/report.txt"}).exitCode, 5);
    }

    void showExplains()
    {
        const CliDesk desk;
        const QByteArray text = desk.run({"show", "02A"}).output;
        QVERIFY2(text.startsWith("02A  Hardware Track mapping [map tracks 1 2 3 to:]\n"), text.constData());
        QVERIFY(text.contains("Factory value: 00\n"));
        QVERIFY(text.contains("05 = 5 =   3   1   2"));
        QVERIFY(
            desk.run({"show", "014"}).output.contains("40 = Checked = Send Start Sentinel for each track else don't"));
        QCOMPARE(desk.run({"show"}).output.count('\n'), 176);
        QCOMPARE(desk.run({"show", "02B"}).exitCode, 2);
        const QJsonArray list = desk.run({"--json", "show", "013"}).json()["parameters"].toArray();
        QCOMPARE(list[0].toObject()["factory"].toString(), QString("95"));
        QCOMPARE(list[0].toObject()["fields"].toArray().size(), 4);
    }
};

static const testsupport::RunnableTest<TeslinSummaryTest> kRunnable;
#include "TeslinSummaryTest.moc"
