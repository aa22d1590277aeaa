#include "text/TextLines.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <string>
#include <string_view>

using namespace std::string_literals;

class TextLinesTest final : public QObject
{
    Q_OBJECT

private slots:
    void lines_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<QByteArrayList>("lines");
        QTest::newRow("no bytes") << ""s << QByteArrayList{};
        QTest::newRow("no line end") << "ab"s << QByteArrayList{"ab"};
        QTest::newRow("CR LF") << "a\r\nb\r\n"s << QByteArrayList{"a", "b"};
        QTest::newRow("LF alone") << "a\nb\n"s << QByteArrayList{"a", "b"};
        QTest::newRow("CR alone") << "a\rb\r"s << QByteArrayList{"a", "b"};
        QTest::newRow("last line without end") << "a\r\nb"s << QByteArrayList{"a", "b"};
        QTest::newRow("all three mixed") << "a\nb\r\nc\rd"s << QByteArrayList{"a", "b", "c", "d"};
        QTest::newRow("one empty line") << "\r\n"s << QByteArrayList{""};
        QTest::newRow("empty line between") << "a\r\n\r\nb"s << QByteArrayList{"a", "", "b"};
        QTest::newRow("LF CR is two ends") << "a\n\rb"s << QByteArrayList{"a", "", "b"};
        QTest::newRow("LF CR LF is two ends") << ";a\n\r\nb"s << QByteArrayList{";a", "", "b"};
        QTest::newRow("CR CR LF is two ends") << "a\r\r\nb"s << QByteArrayList{"a", "", "b"};
        QTest::newRow("CR only after all LF") << "a\nb\nc\rd\re"s << QByteArrayList{"a", "b", "c", "d", "e"};
        QTest::newRow("ends at a CR") << "a\nb\r"s << QByteArrayList{"a", "b"};
        QTest::newRow("NUL and other controls stay")
            << "a\0\x1A\t\nb"s << QByteArrayList{QByteArray("a\0\x1A\t", 4), "b"};
        QTest::newRow("upper half stays, 85 and 8D are no ends")
            << "\x85\x8D\xFF\r\n"s << QByteArrayList{QByteArray("\x85\x8D\xFF")};
    }
    void lines()
    {
        QFETCH(std::string, bytes);
        QFETCH(QByteArrayList, lines);
        text::TextLines walk(bytes);
        QByteArrayList found;
        while (const auto line = walk.next()) {
            found << QByteArray(line->data(), static_cast<qsizetype>(line->size()));
        }
        QCOMPARE(found, lines);
        QVERIFY(!walk.next());
    }
};

static const testsupport::RunnableTest<TextLinesTest> kRunnable;
#include "TextLinesTest.moc"
