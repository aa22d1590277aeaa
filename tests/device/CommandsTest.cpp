#include "device/Commands.h"

#include "tests/support/RunnableTest.h"
#include "tests/support/TextToString.h"

#include <QTest>

using namespace device;

class CommandsTest final : public QObject
{
    Q_OBJECT

private slots:
    void fixedTexts()
    {
        QCOMPARE(commands::kGetPortName, std::string_view("/get port_name"));
        QCOMPARE(commands::kDriverVersion, std::string_view("/ver"));
        QCOMPARE(commands::kDeviceVersion, std::string_view("/get dev_version"));
        QCOMPARE(commands::kIdentify, std::string_view("/rawxact WCY"));
    }

    // The reader's bytes travel spelled out: a backslash, an x and two digits.
    void rawBytesAreSpelledOut()
    {
        QCOMPARE(commands::kLeaveReadTest, std::string_view(R"(/rawsend \xA5)"));
        QCOMPARE(commands::kLeaveReadTest.size(), std::size_t{13});
        QCOMPARE(commands::kNormalMode1, std::string_view(R"(/rawsend \xA8\x40)"));
        QCOMPARE(commands::kNormalMode1.size(), std::size_t{17});
        QCOMPARE(commands::kNormalMode2, std::string_view(R"(/rawsend \xA2)"));
        QCOMPARE(commands::kNormalMode2.size(), std::size_t{13});
    }

    void parameters()
    {
        QCOMPARE(commands::readParameter("013"), "/rawxact WPV013");
        QCOMPARE(commands::readParameter("114"), "/rawxact WPV114");
        QCOMPARE(commands::writeParameter("013", "95"), "/rawsend WPW013=95");
        QCOMPARE(commands::writeParameter("114", ""), "/rawsend WPW114=");
    }

    void oneLineFeedEndsACommand() { QCOMPARE(int{commands::kLineEnd}, 10); }
};

static const testsupport::RunnableTest<CommandsTest> kRunnable;
#include "CommandsTest.moc"
