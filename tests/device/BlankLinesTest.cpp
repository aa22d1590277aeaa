#include "tests/device/ParameterReply.h"
#include "tests/support/DeviceLink.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace testsupport;
using platform::BoxAnswer;

// Lines without a character: each would open a box, and a driver may send thousands of them.
class BlankLinesTest final : public QObject
{
    Q_OBJECT

private slots:
    void blankLinesBehindAnOpenBoxAreDropped()
    {
        DeviceLink on;
        on.openPort();
        on.boxes.expect(BoxAnswer::Ok, [&] {
            on.port.sendUnasked(std::string(30, '\n'));
            on.pump.processPending();
        });
        on.port.sendUnasked("\n");
        on.pump.processPending();
        QVERIFY(on.boxes.verifyAllUsed());
        QCOMPARE(on.boxes.shown.size(), std::size_t{1});
    }

    // The box is modal, but the reader is still listened to.
    void otherLinesBehindAnOpenBoxCount()
    {
        DeviceLink on;
        on.openPort();
        on.link.ReadStatus = 7;
        std::string response;
        int status = -1;
        on.boxes.expect(BoxAnswer::Ok, [&] {
            on.port.sendUnasked("/read report status: 12\n");
            on.pump.processPending();
            status = on.link.ReadStatus;
            on.port.sendUnasked("\n" + parameterReply("013", "95"));
            on.pump.processPending();
            response = on.link.LastResponse;
        });
        on.port.sendUnasked("\r");
        on.pump.processPending();
        QCOMPARE(on.boxes.shown.size(), std::size_t{1});
        QCOMPARE(status, 12);
        QCOMPARE(response, "95");
    }

    // A line that is dropped lights the lamp all the same, and is no "/read" report.
    void aDroppedLineIsStillALine()
    {
        DeviceLink on;
        on.openPort();
        on.boxes.expect(BoxAnswer::Ok, [&] {
            on.log.clear();
            on.link.ReadStatus = 7;
            on.port.sendUnasked("\n");
            on.pump.processPending();
            QCOMPARE(lines(on.log), (QByteArrayList{"recv lit"}));
            QCOMPARE(on.link.ReadStatus, 0);
        });
        on.port.sendUnasked("\n");
        on.pump.processPending();
        QCOMPARE(on.boxes.shown.size(), std::size_t{1});
    }

    // Once the box is closed the next blank line is news again.
    void theNextBlankLineHasABoxOfItsOwn_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("line feeds") << QByteArray("\n\n");
        QTest::newRow("carriage returns") << QByteArray("\r\r");
        QTest::newRow("line feed and carriage return") << QByteArray("\n\r");
        QTest::newRow("a line between") << QByteArray("\nanything\n\n");
    }
    void theNextBlankLineHasABoxOfItsOwn()
    {
        QFETCH(QByteArray, bytes);
        DeviceLink on;
        on.openPort();
        on.boxes.expect(BoxAnswer::Ok);
        on.boxes.expect(BoxAnswer::Ok);
        on.port.sendUnasked(bytes.toStdString());
        on.pump.processPending();
        QVERIFY(on.boxes.verifyAllUsed());
        QCOMPARE(linesWith(on.log, {"box: "}), (QByteArrayList{"box: No data read", "box: No data read"}));
    }
};

static const testsupport::RunnableTest<BlankLinesTest> kRunnable;
#include "BlankLinesTest.moc"
