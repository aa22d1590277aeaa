#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QTest>

#include <array>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

// The read test from the command line to the way out, with a reader whose swipes the test types. Both spellings of the
// command line run side by side.
class ReadTestTest final : public QObject
{
    Q_OBJECT

private:
    std::array<SystemFixture, 2> m_desks;

    static QByteArrayList entering()
    {
        // Opening reads the identification, and so does the test itself.
        return identification() + identification() + QByteArrayList{R"(/rawsend \\xA8\\x40\n)", R"(/rawsend \\xA2\n)"};
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_desks[0].start({}, {}, {.arguments = {u"r"_s}}));
        QVERIFY(m_desks[1].start({}, {}, {.arguments = {u"R"_s}}));
    }

    void commandLine_data()
    {
        QTest::addColumn<int>("desk");
        QTest::newRow("small letter") << 0;
        QTest::newRow("capital letter") << 1;
    }

    void commandLine()
    {
        QFETCH(int, desk);
        SystemFixture& fixture = m_desks[static_cast<std::size_t>(desk)];
        ProgramProcess& program = fixture.program();
        QCOMPARE(program.property(u"SSTab1"_s, u"currentIndex"_s), u"2"_s);
        const QString heading = u"(spaces represented by \"\u2022\")\n==========================="_s;
        QTRY_COMPARE_WITH_TIMEOUT(program.property(u"txtReadTest"_s, u"plainText"_s), heading, limitFor(20));
        QCOMPARE(entering().size(), 12);
        QCOMPARE(fixture.commands(), entering());
        QTRY_VERIFY_WITH_TIMEOUT(!fixture.isPortOpen(), kAtOnce);
        QVERIFY(!program.is(u"KEY_RETRIEVE"_s, u"enabled"_s));
        QVERIFY(!program.is(u"KEY_UPDATE"_s, u"enabled"_s));
        QVERIFY(program.is(u"KEY_EXIT"_s, u"enabled"_s));
        QCOMPARE(program.box(), QString());

        // What the reader types comes once as it is and, after a pause, once more with its control characters named.
        QVERIFY(program.actOnKeyboard(u"type a card\\n"_s));
        QTRY_COMPARE_WITH_TIMEOUT(program.property(u"txtReadTest"_s, u"plainText"_s),
                                  heading + u"a\u2022card\n\nRaw Data: a\u2022card<CR>"_s, limitFor(2));

        QVERIFY(program.act(u"clicktab SSTab1 0"_s));
        const QByteArrayList leaving = entering() + identification() + QByteArrayList{R"(/rawsend \\xA5\n)"};
        QTRY_COMPARE_WITH_TIMEOUT(fixture.commands(), leaving, limitFor(10));
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), kAtOnce);
        QTRY_VERIFY_WITH_TIMEOUT(!fixture.isPortOpen(), kAtOnce);
        QVERIFY(program.is(u"KEY_UPDATE"_s, u"enabled"_s));
        QVERIFY(program.is(u"grdCFG"_s, u"visible"_s));
        QVERIFY(program.is(u"btnNotes"_s, u"visible"_s));
    }
};

} // namespace

QTEST_GUILESS_MAIN(ReadTestTest)

#include "ReadTestTest.moc"
