#include "platform/qt/QtClock.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <ctime>

namespace {

std::chrono::year_month_day systemDay()
{
    const std::time_t now = std::time(nullptr);
    const std::tm* local = std::localtime(&now);
    return std::chrono::year(local->tm_year + 1900) / (local->tm_mon + 1) / local->tm_mday;
}

} // namespace

class QtClockTest final : public QObject
{
    Q_OBJECT

private slots:
    void tellsTheLocalDay()
    {
        platform::QtClock clock;
        const std::chrono::year_month_day before = systemDay();
        const std::chrono::year_month_day today = clock.today();
        const std::chrono::year_month_day after = systemDay(); // another one at midnight
        QVERIFY(today.ok());
        QVERIFY(before <= today && today <= after);
    }

    // Half a day ahead of Greenwich and half a day behind it never is the same day.
    void followsTheTimeZone()
    {
#ifdef Q_OS_WIN
        QSKIP("Windows takes its time zone from the system, not from the environment");
#else
        const auto dayIn = [](const char* zone) {
            qputenv("TZ", zone);
            tzset();
            return platform::QtClock().today();
        };
        const QByteArray zone = qgetenv("TZ");
        const std::chrono::year_month_day east = dayIn("EAST-13");
        const std::chrono::year_month_day west = dayIn("WEST+12");
        zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
        tzset();
        QVERIFY(std::chrono::sys_days(east) > std::chrono::sys_days(west));
#endif
    }
};

static const testsupport::RunnableTest<QtClockTest> kRunnable;
#include "QtClockTest.moc"
