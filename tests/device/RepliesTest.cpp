#include "device/Replies.h"

#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace device;
using Kind = replies::Line::Kind;

Q_DECLARE_METATYPE(Kind)

namespace {

// Stands in tables of expectations for "the reply is not of this kind".
const QByteArray kNothing = "(nothing)";
constexpr int kNoNumber = -1;

QByteArray orNothing(const std::optional<std::string>& text)
{
    return text ? QByteArray::fromStdString(*text) : kNothing;
}

} // namespace

class RepliesTest final : public QObject
{
    Q_OBJECT

private slots:
    // The first so many characters of a line: where a value begins to count.
    void lengths_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<bool>("hasText");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("readStatus");
        const auto row = [](const char* line, int length, Kind kind, bool hasText, const char* text,
                            int readStatus = 0) {
            const QByteArray cut = QByteArray(line).left(length);
            QTest::addRow("%d characters of %s", length, line)
                << cut << kind << hasText << QByteArray(text) << readStatus;
        };
        const char* const parameter = "/rawxact WPV013 reply 00: 95xyz";
        row(parameter, 24, Kind::Ignored, false, "");
        row(parameter, 25, Kind::Ignored, false, "");
        row(parameter, 26, Kind::Ignored, false, "");
        row(parameter, 27, Kind::Ignored, false, "");
        row(parameter, 28, Kind::Parameter, true, "95");
        row(parameter, 29, Kind::Parameter, true, "95x");
        const char* const identification = "/rawxact WCY reply 00 ok: Teslin";
        row(identification, 24, Kind::Identification, false, "");
        row(identification, 25, Kind::Identification, true, "");
        row(identification, 26, Kind::Identification, true, "");
        row(identification, 27, Kind::Identification, true, "T");
        row(identification, 28, Kind::Identification, true, "Te");
        row(identification, 29, Kind::Identification, true, "Tes");
        const char* const report = "/read report status: 123";
        row(report, 4, Kind::Ignored, false, "", 0);
        row(report, 5, Kind::Ignored, false, "", 99);
        row(report, 21, Kind::Ignored, false, "", 99);
        row(report, 22, Kind::Ignored, false, "", 99);
        row(report, 23, Kind::Ignored, false, "", 12);
        row(report, 24, Kind::Ignored, false, "", 123);
    }
    void lengths()
    {
        QFETCH(QByteArray, line);
        const replies::Line parsed = replies::parseLine(line.toStdString());
        QTEST(parsed.kind, "kind");
        QTEST(parsed.hasText, "hasText");
        QTEST(QByteArray::fromStdString(parsed.text), "text");
        QTEST(parsed.readStatus, "readStatus");
    }

    // Every line as it comes, its terminator dropped.
    void lines_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<bool>("hasText");
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char* what, const char* line, Kind kind, bool hasText, const char* text) {
            QTest::newRow(what) << QByteArray(line) << kind << hasText << QByteArray(text);
        };
        row("letters at the start", " WP45678901234567890123456AB", Kind::Parameter, true, "AB");
        row("letters at the end", "1234567890123456789012345 WP", Kind::Parameter, true, "WP");
        row("no blank before WP", "/rawxact:WPV013 reply 00: 95", Kind::Ignored, false, "");
        row("lower case wp", "/rawxact wpv013 reply 00: 95", Kind::Ignored, false, "");
        row("control characters", "\x01rawxact WPV013 reply 00: \x02\x7F", Kind::Parameter, true, "\x02\x7F");

        row("identification", "/rawxact WCY reply 00 ok: Teslin 60044718", Kind::Identification, true,
            "Teslin 60044718");
        row("identification with little else", " WC", Kind::Identification, false, "");
        row("both, identification first", " WC WP78901234567890123456Te", Kind::Identification, true, "Te");
        row("both, parameter first", " WP WC78901234567890123456Te", Kind::Identification, true, "Te");
        row("both and short", " WP WC", Kind::Identification, false, "");

        row("echo of a write", "/rawsend WPW013=95 ok", Kind::Ignored, false, "");
        row("echo of a write of 28", "/rawsend WPW013=95 echo: 013", Kind::Parameter, true, "13");
        row("echo without a parameter", "/rawsend \\xA5 and twenty characters more", Kind::Ignored, false, "");
        row("version", "/ver reply: Teslin KSD 2.10", Kind::Ignored, false, "");
        row("anything", "what the driver says is not for us", Kind::Ignored, false, "");
        row("empty", "", Kind::Ignored, false, "");
    }
    void lines()
    {
        QFETCH(QByteArray, line);
        const replies::Line parsed = replies::parseLine(line.toStdString());
        QTEST(parsed.kind, "kind");
        QTEST(parsed.hasText, "hasText");
        QTEST(QByteArray::fromStdString(parsed.text), "text");
        QCOMPARE(parsed.readStatus, 0);
    }

    void payloadsKeepEveryByte()
    {
        const std::string line("/rawxact WPV013 reply 00: \0\xE9\x80", 29);
        QCOMPARE(replies::parseLine(line).text, std::string("\0\xE9\x80", 3));
    }

    void readStatus_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<int>("status");
        const auto row = [](const char* what, const char* line, int status) {
            QTest::newRow(what) << QByteArray(line) << status;
        };
        row("two digits", "/read report status: 42", 42);
        row("ninety-nine", "/read report status: 99", 99);
        row("more text", "/read report status: 07 of 3", 7);
        row("longer number", "/read report status: 12345", 12345);
        row("letters after it", "/read report status: 12abc", 12);
        row("blank before it", "/read report status:  7", 7);
        row("no number", "/read report status: ok", 0);
        row("highest", "/read report status: 32767", 32767);
        row("does not fit", "/read report status: 32768", 0);
        row("huge", "/read report status: 99999999999999999999999", 0);
        row("negative", "/read report status: -5", 0);
        row("not at the start", " /read report status: 07", 0);
        row("other case", "/READ report status: 07", 0);
        row("leading zero", "/read report status: 07", 7);
    }
    void readStatus()
    {
        QFETCH(QByteArray, line);
        const replies::Line parsed = replies::parseLine(line.toStdString());
        QTEST(parsed.readStatus, "status");
        QVERIFY(parsed.kind == Kind::Ignored);
    }

    void aReadReportMayBeAReplyToo()
    {
        const replies::Line line = replies::parseLine("/read report status: 07 WP04");
        QCOMPARE(line.readStatus, 7);
        QVERIFY(line.kind == Kind::Parameter);
        QCOMPARE(line.text, "04");
    }

    // Replies read straight from the input, terminator included.
    void directReplies_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QByteArray>("driverName");
        QTest::addColumn<QByteArray>("firmwareVersion");
        QTest::addColumn<QByteArray>("identification");
        QTest::addColumn<QByteArray>("parameterValue");
        const auto row = [](const QByteArray& reply, const QByteArray& driverName, const QByteArray& firmwareVersion,
                            const QByteArray& identification, const QByteArray& parameterValue) {
            QTest::addRow("%s (%d)", reply.trimmed().constData(), int(reply.size()))
                << reply << driverName << firmwareVersion << identification << parameterValue;
        };
        const QByteArray no = kNothing;
        row("", no, no, no, no);
        row("\n", no, no, no, no);
        row("/ver reply: Teslin KSD 2.10\n", "Teslin KSD 2.10\n", no, no, no);
        row("/ver reply: Teslin KSD 2.10", "Teslin KSD 2.10", no, no, no);
        row("/ver reply:\n", "", no, no, no);
        row("/ver reply: \n", "\n", no, no, no);
        row("/ver\n", "", no, no, no);
        row("ok = /ver 2.10\n", "10\n", no, no, no); // anywhere in the reply
        row("/VER reply: Teslin\n", no, no, no, no);

        row("/get dev_version reply: 3.07/Teslin\n", no, "3.07", no, no);
        row("/get dev_version reply: 3.07\n", no, "3.07\n", no, no);
        row("/get dev_version reply:\n", no, no, no, no);    // 24
        row("/get dev_version reply: \n", no, "\n", no, no); // 25
        row("/get dev_version reply: /\n", no, "", no, no);
        row("/get dev_version reply: 3/0/7\n", no, "3", no, no);
        row("dev_version", no, no, no, no);

        row("/rawxact WCY reply 00 ok: Teslin 60044718\n", no, no, "Teslin 60044718", no);
        row("/rawxact WCY reply 00 o\n", no, no, no, no);  // 24
        row("/rawxact WCY reply 00 ok\n", no, no, "", no); // 25
        row("/rawxact WCY reply 00 ok:\n", no, no, "", no);
        row("/rawxact WCY reply 00 ok: \n", no, no, "", no);
        row("/rawxact WCY reply 00 ok: T\n", no, no, "T", no);
        row("/rawxact WCY reply 00 ok: T\r\n", no, no, "T\r", no); // one character is cut, no more

        row("/rawxact WPV081 reply 00: 04\n", no, no, no, "04");
        row("/rawxact WPV081 reply 0\n", no, no, no, no);  // 24
        row("/rawxact WPV081 reply 00\n", no, no, no, ""); // 25
        row("/rawxact WPV081 reply 00:\n", no, no, no, "");
        row("/rawxact WPV081 reply 00: \n", no, no, no, "");
        row("/rawxact WPV081 reply 00: 4\n", no, no, no, "4");
        row("/rawxact:WPV081 reply 00: 04\n", no, no, no, no);

        row("/ver dev_version WC WP345678901\n", "sion WC WP345678901\n", "5678901\n", "78901", "78901");
    }
    void directReplies()
    {
        QFETCH(QByteArray, reply);
        const std::string text = reply.toStdString();
        QTEST(orNothing(replies::driverName(text)), "driverName");
        QTEST(orNothing(replies::firmwareVersion(text)), "firmwareVersion");
        QTEST(orNothing(replies::identification(text)), "identification");
        QTEST(orNothing(replies::parameterValue(text)), "parameterValue");
    }

    void portNames_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QByteArray>("name");
        const auto row = [](const char* what, const QByteArray& answer, const QByteArray& name) {
            QTest::newRow(what) << answer << name;
        };
        const QByteArray head = "/get port_name=";
        row("carriage return", head + "COM12\r", "COM12");
        row("line feed", head + "COM12\n", "COM12");
        row("no line end", head + "COM12", "COM12");
        row("two control characters", head + "COM12\r\n", "COM12\r");
        row("three control characters", head + "COM12\r\n\x01", "COM12\r\n");
        row("the whole buffer", (head + "COM12\r").leftJustified(2000, '\0'), "COM12");
        row("the whole buffer, two control characters", (head + "COM12\r\n").leftJustified(2000, '\0'), "COM12\r");
        row("2,000 NULs", QByteArray(2000, '\0'), kNothing);
        row("text behind the first NUL", QByteArray("COM5\0COM6\r", 10), "COM5");
        row("COM behind a NUL", QByteArray("port\0COM6\r", 10), "COM6");
        row("the highest port", head + "COM256\r", "COM256");
        row("a number with something behind it", head + "COM12abc\r", "COM12abc");
        // A number that no port can have names none.
        row("COM alone", "COM", kNothing);
        row("COM and a carriage return", "COM\r", kNothing);
        row("NUL directly behind COM",
            QByteArray("COM\0"
                       "5",
                       5),
            kNothing);
        row("the first COM has no number", "COMMAND port_name=COM5\r", kNothing);
        row("COM0", head + "COM0\r", kNothing);
        row("beyond the highest port", head + "COM257\r", kNothing);
        row("COM70000", head + "COM70000\r", kNothing);
        row("COM-3", head + "COM-3\r", kNothing);
        row("the first COM counts", "COM6 COM7\r", "COM6 COM7");
        row("a blank at the end stays", "COM5 ", "COM5 ");
        row("a byte of the upper half stays", "COM5\xE9", "COM5\xE9");
        row("2,000 bytes of name", "COM1" + QByteArray(1996, 'x'), "COM1" + QByteArray(1996, 'x'));
        row("2,000 bytes of number", "COM" + QByteArray(1997, '1'), kNothing);
        row("lower case", head + "com12\r", kNothing);
        row("no name", head + "\r", kNothing);
        row("empty", "", kNothing);
    }
    void portNames()
    {
        QFETCH(QByteArray, answer);
        QTEST(orNothing(replies::portName(answer.toStdString())), "name");
    }

    void portNumbers_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("number");
        const auto row = [](const QByteArray& name, int number) {
            QTest::addRow("%s (%d)", name.left(24).constData(), int(name.size())) << name << number;
        };
        row("COM5", 5);
        row("COM1", 1);
        row("COM256", 256);
        row("COM12", 12);
        row("COM12\r", 12);
        row("COM12\x01\r", 12);
        row("COM007", 7);
        row("COM 7", 7);
        row("COM12abc", 12);
        row("COM1 2", 12); // blanks are skipped
        row("\\\\.\\COM3", 3);
        row("COM0", kNoNumber);
        row("COM", kNoNumber);
        row("COMx", kNoNumber);
        row("COM0x10", kNoNumber);
        row("COMMAND COM5", kNoNumber); // of the first "COM"
        row("COM0.5", kNoNumber);
        row("COM256.5", kNoNumber);
        row("COM257", kNoNumber);
        row("COM70000", kNoNumber);
        row("COM65541", kNoNumber);      // 5, were it cut to 16 bits
        row("COM4294967301", kNoNumber); // 5, were it cut to 32 bits
        row("COM" + QByteArray(1997, '9'), kNoNumber);
        row("COM-1", kNoNumber);
        row("COM-3", kNoNumber);
        row("COM-99999", kNoNumber);
        row("com5", kNoNumber);
        row("5", kNoNumber);
        row("", kNoNumber);
    }
    void portNumbers()
    {
        QFETCH(QByteArray, name);
        const std::optional<std::int16_t> number = replies::portNumber(name.toStdString());
        QTEST(number ? int{*number} : kNoNumber, "number");
    }
};

static const testsupport::RunnableTest<RepliesTest> kRunnable;
#include "RepliesTest.moc"
