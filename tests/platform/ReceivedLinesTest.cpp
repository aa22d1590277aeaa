#include "platform/ReceivedLines.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using platform::ReceivedLines;

class ReceivedLinesTest final : public QObject
{
    Q_OBJECT

private slots:
    // Pieces as they arrive, and the lines they make, each with its one terminator.
    void lines_data()
    {
        QTest::addColumn<QByteArrayList>("pieces");
        QTest::addColumn<QByteArrayList>("lines");
        QTest::addColumn<QByteArray>("rest");
        QTest::newRow("one line") << QByteArrayList{"abc\n"} << QByteArrayList{"abc\n"} << QByteArray();
        QTest::newRow("carriage return") << QByteArrayList{"abc\r"} << QByteArrayList{"abc\r"} << QByteArray();
        QTest::newRow("unfinished") << QByteArrayList{"abc"} << QByteArrayList{} << QByteArray("abc");
        QTest::newRow("two in one write") << QByteArrayList{"a\nb\n"} << QByteArrayList{"a\n", "b\n"} << QByteArray();
        QTest::newRow("every byte alone")
            << QByteArrayList{"a", "b", "\n", "c", "\n"} << QByteArrayList{"ab\n", "c\n"} << QByteArray();
        QTest::newRow("CR LF in one piece")
            << QByteArrayList{"a\r\nb\n"} << QByteArrayList{"a\r", "b\n"} << QByteArray();
        QTest::newRow("CR LF in two pieces")
            << QByteArrayList{"a\r", "\nb\n"} << QByteArrayList{"a\r", "b\n"} << QByteArray();
        QTest::newRow("LF CR is an empty line")
            << QByteArrayList{"a\n\rb\n"} << QByteArrayList{"a\n", "\r", "b\n"} << QByteArray();
        QTest::newRow("empty line") << QByteArrayList{"\n"} << QByteArrayList{"\n"} << QByteArray();
        QTest::newRow("two line feeds") << QByteArrayList{"a\n\n"} << QByteArrayList{"a\n", "\n"} << QByteArray();
        QTest::newRow("NUL inside") << QByteArrayList{QByteArray("a\0b\n", 4)}
                                    << QByteArrayList{QByteArray("a\0b\n", 4)} << QByteArray();
    }
    void lines()
    {
        QFETCH(QByteArrayList, pieces);
        QFETCH(QByteArrayList, lines);
        QFETCH(QByteArray, rest);
        ReceivedLines received;
        QByteArrayList taken;
        for (const QByteArray& piece : pieces) {
            received.append(piece.toStdString());
            while (received.hasLine()) {
                taken.append(QByteArray::fromStdString(received.takeLine()));
            }
        }
        QCOMPARE(taken, lines);
        QCOMPARE(received.size(), int(rest.size()));
        QCOMPARE(QByteArray::fromStdString(received.takeAll()), rest);
        QCOMPARE(received.size(), 0);
    }

    void takingAllGivesLinesAndRest()
    {
        ReceivedLines received;
        received.append("one\ntwo\nthr");
        QCOMPARE(received.takeAll(), "one\ntwo\nthr");
        QVERIFY(!received.hasLine());
    }

    // What is read raw is whole, and what comes after it begins afresh: a line feed is no rest of an older line end.
    void takingAllForgetsAHalfLineEnd()
    {
        ReceivedLines received;
        received.append("a\r");
        QCOMPARE(received.takeLine(), "a\r");
        QCOMPARE(received.takeAll(), "");
        received.append("\nb\n");
        QCOMPARE(received.takeAll(), "\nb\n");
    }

    // A line end that was read raw is not waited for either.
    void aLineEndInsideWhatIsTakenAllOfIsForgotten()
    {
        ReceivedLines received;
        received.append("a\r");
        QCOMPARE(received.takeAll(), "a\r");
        received.append("\n");
        QVERIFY(received.hasLine());
        QCOMPARE(received.takeLine(), "\n");
    }

    void clearingForgetsAHalfLineEnd()
    {
        ReceivedLines received;
        received.append("a\r");
        QCOMPARE(received.takeLine(), "a\r");
        received.clear();
        received.append("\n");
        QCOMPARE(received.takeLine(), "\n");
    }
};

static const testsupport::RunnableTest<ReceivedLinesTest> kRunnable;
#include "ReceivedLinesTest.moc"
