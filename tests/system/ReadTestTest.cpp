#include "tests/support/RunnableTest.h"
#include "tests/system/ExpectedCommands.h"
#include "tests/system/Limits.h"
#include "tests/system/SystemFixture.h"

#include <QFile>
#include <QTest>

#include <array>

using namespace Qt::StringLiterals;
using namespace systemtest;

namespace {

// The read test from the command line to the way out, with a reader whose swipes the test types. Both spellings of the
// command line run side by side, one of them behind blanks.
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
    static QByteArrayList leaving() { return identification() + QByteArrayList{R"(/rawsend \\xA5\n)"}; }

    static QString heading() { return u"(spaces represented by \"\u2022\")\n==========================="_s; }
    static void verifyHeading(ProgramProcess& program)
    {
        QTRY_COMPARE_WITH_TIMEOUT(program.property(u"txtReadTest"_s, u"plainText"_s), heading(), limitFor(20));
    }
    static void verifyLeft(SystemFixture& fixture, const QString& grid)
    {
        ProgramProcess& program = fixture.program();
        QTRY_VERIFY_WITH_TIMEOUT(program.isIdle(), limitFor(10));
        QTRY_VERIFY_WITH_TIMEOUT(!fixture.isPortOpen(), kAtOnce);
        QVERIFY(program.is(u"KEY_UPDATE"_s, u"enabled"_s));
        QVERIFY(program.is(grid, u"visible"_s));
        QVERIFY(program.is(u"btnNotes"_s, u"visible"_s));
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_desks[0].start({}, {}, {.arguments = {u"r"_s}}));
        QVERIFY(m_desks[1].start({}, {}, {.arguments = {u"  R"_s}}));
    }

    void commandLine_data()
    {
        QTest::addColumn<int>("desk");
        QTest::newRow("small letter") << 0;
        QTest::newRow("capital letter behind blanks") << 1;
    }

    void commandLine()
    {
        QFETCH(int, desk);
        SystemFixture& fixture = m_desks[static_cast<std::size_t>(desk)];
        ProgramProcess& program = fixture.program();
        QCOMPARE(program.property(u"SSTab1"_s, u"currentIndex"_s), u"2"_s);
        verifyHeading(program);
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
                                  heading() + u"a\u2022card\n\nRaw Data: a\u2022card<CR>"_s, limitFor(2));

        QVERIFY(program.act(u"clicktab SSTab1 0"_s));
        QTRY_COMPARE_WITH_TIMEOUT(fixture.commands(), entering() + leaving(), limitFor(10));
        verifyLeft(fixture, u"grdCFG"_s);
    }

    void byTab()
    {
        SystemFixture fixture;
        QVERIFY(fixture.start());
        ProgramProcess& program = fixture.program();
        QVERIFY(program.act(u"clicktab SSTab1 2"_s));
        verifyHeading(program);
        QCOMPARE(fixture.commands(), entering());
        QTRY_VERIFY_WITH_TIMEOUT(!fixture.isPortOpen(), kAtOnce);
        QVERIFY(program.act(u"clicktab SSTab1 1"_s));
        QTRY_COMPARE_WITH_TIMEOUT(fixture.commands(), entering() + leaving(), limitFor(10));
        verifyLeft(fixture, u"grdKB"_s);
    }

    void deadLink_data()
    {
        QTest::addColumn<QString>("entry"); // of the folder of DOS names, the one that is missing
        QTest::addColumn<QString>("text");
        QTest::newRow("no device object") << u"teslin"_s
                                          << u"Was unable to open the Teslin Device Driver.  Check to see if the "
                                             "driver is installed and the Teslin is attached"_s;
        QTest::newRow("no port") << u"com5"_s << u"Could not open COM5, "_s + Machine::noSuchFile();
    }
    // One box, a test that still shows keys, and a way out on which nothing is said or sent.
    void deadLink()
    {
        QFETCH(QString, entry);
        QFETCH(QString, text);
        SystemFixture fixture;
        QVERIFY(fixture.start());
        QVERIFY(QFile::remove(fixture.reader().entry(entry)));
        ProgramProcess& program = fixture.program();
        QVERIFY(program.act(u"clicktab SSTab1 2"_s));
        QTRY_COMPARE_WITH_TIMEOUT(program.box(), boxOf(u"Teslin Configure"_s, u"critical"_s, u"OK*"_s, text), kAtOnce);
        QVERIFY(program.act(u"press OK"_s));
        verifyHeading(program);
        QVERIFY(program.actOnKeyboard(u"type x"_s));
        QTRY_COMPARE_WITH_TIMEOUT(program.property(u"txtReadTest"_s, u"plainText"_s), heading() + u"x\nRaw Data: x"_s,
                                  limitFor(2));
        QVERIFY(!program.is(u"KEY_UPDATE"_s, u"enabled"_s));
        QVERIFY(program.act(u"clicktab SSTab1 0"_s));
        verifyLeft(fixture, u"grdCFG"_s);
        QCOMPARE(program.box(), QString());
        QCOMPARE(fixture.commands(), QByteArrayList{});
    }

    // The reader was unplugged in the test: it is missed once, when the test is left.
    void readerGoneMeanwhile()
    {
        SystemFixture fixture;
        QVERIFY(fixture.start());
        ProgramProcess& program = fixture.program();
        QVERIFY(program.act(u"clicktab SSTab1 2"_s));
        verifyHeading(program);
        fixture.unplugReader();
        QVERIFY(program.act(u"clicktab SSTab1 1"_s));
        QTRY_COMPARE_WITH_TIMEOUT(
            program.box(),
            boxOf(u"Teslin Configure"_s, u"critical"_s, u"OK*"_s, u"Could not open COM5, "_s + Machine::noSuchFile()),
            kAtOnce);
        QVERIFY(program.act(u"press OK"_s));
        verifyLeft(fixture, u"grdKB"_s);
        QVERIFY(program.act(u"clicktab SSTab1 0"_s));
        QTRY_VERIFY_WITH_TIMEOUT(program.is(u"grdCFG"_s, u"visible"_s), kAtOnce);
        QCOMPARE(program.box(), QString());
        QCOMPARE(fixture.commands(), entering());
    }
};

} // namespace

static const testsupport::RunnableTest<ReadTestTest> kRunnable;

#include "ReadTestTest.moc"
