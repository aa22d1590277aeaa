#include "platform/ProfileText.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace platform;

namespace {

QByteArray valueIn(const QByteArray& bytes, std::size_t bufferSize = kProfileBufferSize)
{
    return QByteArray::fromStdString(profileString(bytes.toStdString(), "Name", "Friendly Name", bufferSize));
}

QByteArray written(const QByteArray& bytes, const QByteArray& value)
{
    return QByteArray::fromStdString(
        withProfileString(bytes.toStdString(), "Name", "Friendly Name", value.toStdString()));
}

} // namespace

class ProfileTextTest final : public QObject
{
    Q_OBJECT

private slots:
    void reading_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("value");
        const auto row = [](const char* what, const QByteArray& bytes, const QByteArray& value) {
            QTest::newRow(what) << bytes << value;
        };
        row("plain", "[Name]\r\nFriendly Name=Teslin\r\n", "Teslin");
        row("no line end", "[Name]\r\nFriendly Name=Teslin", "Teslin");
        row("LF alone", "[Name]\nFriendly Name=Teslin\n", "Teslin");
        row("CR alone", "[Name]\rFriendly Name=Teslin\r", "Teslin");
        row("other case", "[nAME]\r\nFRIENDLY nAME=Teslin\r\n", "Teslin");
        row("blanks around everything", "  [ Name ]  \r\n\t Friendly Name \t = \t Teslin \t \r\n", "Teslin");
        row("a blank inside the key counts", "[Name]\r\nFriendly  Name=Teslin\r\n", "");
        row("blanks inside the value stay", "[Name]\r\nFriendly Name= a \t b \r\n", "a \t b");
        row("double quotes", "[Name]\r\nFriendly Name= \" Teslin \" \r\n", " Teslin ");
        row("single quotes", "[Name]\r\nFriendly Name=' Teslin '\r\n", " Teslin ");
        row("one pair of quotes alone", "[Name]\r\nFriendly Name=\"\"Teslin\"\"\r\n", "\"Teslin\"");
        row("quotes of two kinds", "[Name]\r\nFriendly Name=\"'Teslin'\"\r\n", "'Teslin'");
        row("quotes that do not match", "[Name]\r\nFriendly Name=\"Teslin'\r\n", "\"Teslin'");
        row("a quote in front alone", "[Name]\r\nFriendly Name=\"Teslin\r\n", "\"Teslin");
        row("a quote alone", "[Name]\r\nFriendly Name=\"\r\n", "\"");
        row("quotes around nothing", "[Name]\r\nFriendly Name=\"\"\r\n", "");
        row("equal signs in the value", "[Name]\r\nFriendly Name=a=b=\r\n", "a=b=");
        row("a bracket in the value", "[Name]\r\nFriendly Name=[x]\r\n", "[x]");
        row("a semicolon in the value", "[Name]\r\nFriendly Name=a ; b\r\n", "a ; b");
        row("bytes above 127", "[Name]\r\nFriendly Name=\x80\xE9\xFF\r\n", "\x80\xE9\xFF");
        row("commas and digits", "[Name]\r\nFriendly Name=-10,20,300,400\r\n", "-10,20,300,400");

        row("empty file", "", "");
        row("blank lines alone", "\r\n\r\n", "");
        row("no such section", "[Names]\r\nFriendly Name=Teslin\r\n", "");
        row("no such key", "[Name]\r\nFriendly Names=Teslin\r\n", "");
        row("a section without lines", "[Name]", "");
        row("no value", "[Name]\r\nFriendly Name=\r\n", "");
        row("no equal sign", "[Name]\r\nFriendly Name\r\n", "");
        row("key before every section", "Friendly Name=Teslin\r\n[Name]\r\n", "");
        row("key in another section", "[Name]\r\n[Port]\r\nFriendly Name=Teslin\r\n", "");
        row("comment", "[Name]\r\n;Friendly Name=Teslin\r\n", "");
        row("comment with blanks", "[Name]\r\n ; Friendly Name=Teslin\r\n", "");
        row("section in a comment", ";[Name]\r\nFriendly Name=Teslin\r\n", "");

        row("behind other sections, comments and blank lines",
            "; by hand\r\n[Port]\r\nFriendly Name=no\r\n\r\n[Name]\r\n\r\n; one\r\nx=y\r\nFriendly Name=yes\r\n",
            "yes");
        row("the first key counts", "[Name]\r\nFriendly Name=a\r\nFriendly Name=b\r\n", "a");
        row("the first key counts, empty too", "[Name]\r\nFriendly Name=\r\nFriendly Name=b\r\n", "");
        row("the first section counts", "[Name]\r\nFriendly Name=a\r\n[Name]\r\nFriendly Name=b\r\n", "a");
        row("the first section counts, without the key too", "[Name]\r\nx=y\r\n[NAME]\r\nFriendly Name=b\r\n", "");
        row("text behind the section's bracket", "[Name] ; of the driver\r\nFriendly Name=Teslin\r\n", "Teslin");
        row("a section without its bracket", "[Name\r\nFriendly Name=Teslin\r\n", "Teslin");
        row("an equal sign in a section", "[Name]\r\n[Friendly Name=x]\r\nFriendly Name=Teslin\r\n", "");
    }
    void reading()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, value);
        QCOMPARE(valueIn(bytes), value);
    }

    void theBufferCutsLongValues_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("read");
        QTest::newRow("39 characters") << QByteArray(39, 'x') << QByteArray(39, 'x');
        QTest::newRow("40 characters") << QByteArray(40, 'x') << QByteArray(39, 'x');
        QTest::newRow("200 characters") << QByteArray(200, 'x') << QByteArray(39, 'x');
        QTest::newRow("quotes do not count") << "\"" + QByteArray(39, 'x') + "\"" << QByteArray(39, 'x');
        QTest::newRow("a blank before the cut stays") << QByteArray(38, 'x') + " y" << QByteArray(38, 'x') + " ";
    }
    void theBufferCutsLongValues()
    {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, read);
        QCOMPARE(valueIn("[Name]\r\nFriendly Name=" + value + "\r\n"), read);
    }

    void otherBuffers()
    {
        const QByteArray bytes = "[Name]\r\nFriendly Name=Teslin\r\n";
        QCOMPARE(valueIn(bytes, 0), "");
        QCOMPARE(valueIn(bytes, 1), "");
        QCOMPARE(valueIn(bytes, 2), "T");
        QCOMPARE(valueIn(bytes, 7), "Teslin");
        QCOMPARE(valueIn(bytes, 1024), "Teslin");
    }

    void writing_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char* what, const QByteArray& before, const QByteArray& after) {
            QTest::newRow(what) << before << after;
        };
        row("empty file", "", "[Name]\r\nFriendly Name=new\r\n");
        row("in place", "[Name]\r\na=b\r\nFriendly Name=old value\r\nc=d\r\n",
            "[Name]\r\na=b\r\nFriendly Name=new\r\nc=d\r\n");
        row("in place of nothing", "[Name]\r\nFriendly Name=\r\nc=d\r\n", "[Name]\r\nFriendly Name=new\r\nc=d\r\n");
        row("in place in other case and with blanks", "[NAME]\r\n friendly name = old \r\n",
            "[NAME]\r\n friendly name =new\r\n");
        row("in place before LF", "[Name]\nFriendly Name=old\nc=d\n", "[Name]\nFriendly Name=new\nc=d\n");
        row("in place before CR", "[Name]\rFriendly Name=old\rc=d\r", "[Name]\rFriendly Name=new\rc=d\r");
        row("in place at the end without a line end", "[Name]\r\nFriendly Name=old", "[Name]\r\nFriendly Name=new\r\n");
        row("in place, the value has equal signs", "[Name]\r\nFriendly Name=a=b\r\n",
            "[Name]\r\nFriendly Name=new\r\n");
        row("in place, an earlier line has none", "[Name]\r\nnothing\r\nFriendly Name=old\r\n",
            "[Name]\r\nnothing\r\nFriendly Name=new\r\n");
        row("the first key alone", "[Name]\r\nFriendly Name=a\r\nFriendly Name=b\r\n",
            "[Name]\r\nFriendly Name=new\r\nFriendly Name=b\r\n");

        row("added to its section", "[Name]\r\na=b\r\n", "[Name]\r\na=b\r\nFriendly Name=new\r\n");
        row("added to an empty section", "[Name]\r\n", "[Name]\r\nFriendly Name=new\r\n");
        row("added to a section without a line end", "[Name]", "[Name]\r\nFriendly Name=new\r\n");
        row("added behind a line without a line end", "[Name]\r\na=b", "[Name]\r\na=b\r\nFriendly Name=new\r\n");
        row("added before the next section", "[Name]\r\na=b\r\n[Port]\r\nc=d\r\n",
            "[Name]\r\na=b\r\nFriendly Name=new\r\n[Port]\r\nc=d\r\n");
        row("added before the gap to the next section", "[Name]\r\na=b\r\n\r\n \t\r\n[Port]\r\nc=d\r\n",
            "[Name]\r\na=b\r\nFriendly Name=new\r\n\r\n \t\r\n[Port]\r\nc=d\r\n");
        row("added behind a comment", "[Name]\r\n; Friendly Name=old\r\n\r\n[Port]\r\n",
            "[Name]\r\n; Friendly Name=old\r\nFriendly Name=new\r\n\r\n[Port]\r\n");
        row("added behind a gap inside the section", "[Name]\r\n\r\na=b\r\n",
            "[Name]\r\n\r\na=b\r\nFriendly Name=new\r\n");
        row("added to the first section of the name", "[Name]\r\na=b\r\n[Name]\r\nFriendly Name=old\r\n",
            "[Name]\r\na=b\r\nFriendly Name=new\r\n[Name]\r\nFriendly Name=old\r\n");
        row("added to a file of LF", "[Name]\na=b\n[Port]\n", "[Name]\na=b\nFriendly Name=new\r\n[Port]\n");

        row("section added", "[Port]\r\nc=d\r\n", "[Port]\r\nc=d\r\n[Name]\r\nFriendly Name=new\r\n");
        row("section added behind no line end", "[Port]\r\nc=d", "[Port]\r\nc=d\r\n[Name]\r\nFriendly Name=new\r\n");
        row("section added behind blank lines", "[Port]\r\n\r\n", "[Port]\r\n\r\n[Name]\r\nFriendly Name=new\r\n");
        row("key outside every section", "Friendly Name=old\r\n",
            "Friendly Name=old\r\n[Name]\r\nFriendly Name=new\r\n");
    }
    void writing()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QCOMPARE(written(before, "new"), after);
        QCOMPARE(written(after, "new"), after);
        QCOMPARE(valueIn(after), "new");
    }

    void whatIsWritten_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("read");
        const auto row = [](const char* what, const QByteArray& value, const QByteArray& line, const QByteArray& read) {
            QTest::newRow(what) << value << line << read;
        };
        row("plain", "COM5", "COM5", "COM5");
        row("nothing", "", "", "");
        row("up to a carriage return", "COM12\r", "COM12", "COM12");
        row("up to a line end, a section behind it", "COM12\r\n[Port]", "COM12", "COM12");
        row("up to a tab", "a\tb", "a", "a");
        row("up to a NUL", QByteArray("a\0b", 3), "a", "a");
        row("a control character first", "\x1b[Port]", "", "");
        row("the character below blank", "a\x1f", "a", "a");
        row("blanks are written and not read", " a ", " a ", "a");
        row("quotes are written and not read", "\"a\"", "\"a\"", "a");
        row("bytes above 126", "\x7f\x80\xE9\xFF", "\x7f\x80\xE9\xFF", "\x7f\x80\xE9\xFF");
        row("200 characters", QByteArray(200, 'x'), QByteArray(200, 'x'), QByteArray(39, 'x'));
        row("a semicolon", ";a", ";a", ";a");
        row("a bracket", "[Port]", "[Port]", "[Port]");
    }
    void whatIsWritten()
    {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, read);
        const QByteArray bytes = written("[Name]\r\nFriendly Name=old\r\n[Port]\r\n", value);
        QCOMPARE(bytes, "[Name]\r\nFriendly Name=" + line + "\r\n[Port]\r\n");
        QCOMPARE(valueIn(bytes), read);
    }

    void othersKeepTheirBytes()
    {
        const QByteArray before = QByteArray("\xEF\xBB\xBF; by hand\n\n[Other program]\r\nFriendly Name = \"x\" \r") +
                                  QByteArray("a\0b=c\r\n", 7) + "\t[Name]\t\nFriendly Name=";
        const QByteArray after = "\r\n\r\n\r;\xE9\n[Name]\nFriendly Name=second\n[\n]\n=\n\x1a";
        QCOMPARE(written(before + "old" + after, "new"), before + "new" + after);
    }

    void aMegabyte()
    {
        const QByteArray lines = QByteArray("key=value of another program\r\n").repeated(35'000);
        const QByteArray before = "[Other]\r\n" + lines + "[Name]\r\nFriendly Name=";
        const QByteArray after = "\r\n" + lines;
        QVERIFY(before.size() > 1'000'000);
        QCOMPARE(valueIn(before + "Teslin" + after), "Teslin");
        QVERIFY(written(before + "Teslin" + after, "new") == before + "new" + after);
        QVERIFY(written("[Name]\r\n" + lines, "new") == "[Name]\r\n" + lines + "Friendly Name=new\r\n");
    }

    void aLineOfAMegabyte()
    {
        const QByteArray line(1'000'000, 'x');
        QCOMPARE(valueIn("[Name]\r\n" + line + "\r\nFriendly Name=" + line + "\r\n"), QByteArray(39, 'x'));
        QCOMPARE(valueIn("[" + line + "]\r\nFriendly Name=a\r\n"), "");
    }
};

static const testsupport::RunnableTest<ProfileTextTest> kRunnable;
#include "ProfileTextTest.moc"
