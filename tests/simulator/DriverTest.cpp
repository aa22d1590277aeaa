#include "simulator/Driver.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

using namespace simulator;

namespace {

QByteArray written(const Reaction& reaction)
{
    QByteArray bytes;
    for (const Action& action : reaction.actions) {
        bytes += QByteArray::fromStdString(action.bytes);
    }
    return bytes;
}

} // namespace

class DriverTest final : public QObject
{
    Q_OBJECT

private slots:
    void eachDoorAnswersItsOwnCommands()
    {
        Driver driver;
        QCOMPARE(written(driver.receive(Door::Port, "/ver")), QByteArray("/ver reply: Teslin KSD 2.10\n"));
        QCOMPARE(written(driver.receive(Door::DeviceObject, "/get port_name")), QByteArray("/get port_name=COM5\r"));
        QCOMPARE(written(driver.receive(Door::Port, "/get port_name")), QByteArray());
        QCOMPARE(written(driver.receive(Door::DeviceObject, "/ver")), QByteArray());
    }

    void thePortNumberIsItsOwn()
    {
        Driver driver(256);
        QCOMPARE(written(driver.receive(Door::DeviceObject, "/get port_name")), QByteArray("/get port_name=COM256\r"));
    }

    void faultsActAtBothDoors()
    {
        Driver driver;
        QVERIFY(driver.faults().add("/get port_name: value=LPT1"));
        QVERIFY(driver.faults().add("/ver: cut=4"));
        QCOMPARE(written(driver.receive(Door::DeviceObject, "/get port_name")), QByteArray("/get port_name=LPT1\r"));
        QCOMPARE(written(driver.receive(Door::Port, "/ver")), QByteArray("/ver\n"));
    }

    void aWriteIsStoredEvenIfItsReplyGoesWrong()
    {
        Driver driver;
        QVERIFY(driver.faults().add("/rawsend *: silent"));
        QCOMPARE(written(driver.receive(Door::Port, "/rawsend WPW013=01")), QByteArray());
        QCOMPARE(driver.reader().memory().value("013").value_or(""), std::string("01"));
        QCOMPARE(written(driver.receive(Door::Port, "/rawxact WPV013")), QByteArray("/rawxact WPV013 reply 00: 01\n"));
    }
};

static const testsupport::RunnableTest<DriverTest> kRunnable;
#include "DriverTest.moc"
