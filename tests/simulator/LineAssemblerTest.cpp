#include "simulator/LineAssembler.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace simulator;

using Lines = std::vector<LineAssembler::Line>;

class LineAssemblerTest final : public QObject
{
    Q_OBJECT

private slots:
    void aLineEndsWithALineFeed()
    {
        LineAssembler lines;
        QVERIFY((lines.take("/ver\n") == Lines{{"/ver", true}}));
        QVERIFY(lines.takeRest().empty());
    }

    void severalLinesInOneRead()
    {
        LineAssembler lines;
        QVERIFY(
            (lines.take("/ver\n\n/rawxact WCY\n/raw") == Lines{{"/ver", true}, {"", true}, {"/rawxact WCY", true}}));
        QCOMPARE(lines.takeRest(), std::string("/raw"));
        QVERIFY(lines.takeRest().empty());
    }

    void oneLineInSeveralReads()
    {
        LineAssembler lines;
        for (const char c : std::string("/ver")) {
            QVERIFY(lines.take(std::string(1, c)).empty());
        }
        QVERIFY((lines.take("\n") == Lines{{"/ver", true}}));
    }

    void everyOtherByteBelongsToTheLine()
    {
        LineAssembler lines;
        const std::string odd("a\r\0\xFF", 4);
        QVERIFY((lines.take(odd + "\n") == Lines{{odd, true}}));
    }

    void aLineThatNeverEndsComesInPieces()
    {
        const std::string piece(LineAssembler::kLongestLine, 'x');
        LineAssembler lines;
        QVERIFY((lines.take(piece + piece + "yz\n") == Lines{{piece, false}, {piece, false}, {"yz", true}}));
    }
};

static const testsupport::RunnableTest<LineAssemblerTest> kRunnable;
#include "LineAssemblerTest.moc"
