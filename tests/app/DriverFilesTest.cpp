#include "app/dialogs/frmAbout.h"
#include "tests/support/RunnableTest.h"

#include <QTest>

#include <string>
#include <vector>

namespace {

using Files = std::vector<std::string>;

const Files kAll = {R"(C:\Windows\System\Teslin.vxd)", R"(C:\WINNT\system32\drivers\Teslin.sys)",
                    R"(C:\Windows\system32\drivers\Teslin.sys)"};

} // namespace

// In which order the driver's three places are looked at, and that nobody looks on behind the first that has it.
class DriverFilesTest final : public QObject
{
    Q_OBJECT

private slots:
    void oneAfterTheOtherUpToTheFirst_data()
    {
        QTest::addColumn<int>("first");
        QTest::newRow("95, 98 and ME") << 0;
        QTest::newRow("NT") << 1;
        QTest::newRow("2000 and XP") << 2;
    }
    void oneAfterTheOtherUpToTheFirst()
    {
        QFETCH(int, first);
        Files asked;
        const bool found = app::frmAbout::hasDriverFile([&](std::string_view file) {
            asked.emplace_back(file);
            return file == kAll[static_cast<std::size_t>(first)];
        });
        QVERIFY(found);
        QVERIFY(asked == Files(kAll.begin(), kAll.begin() + first + 1));
    }

    void allWhereThereIsNone()
    {
        Files asked;
        QVERIFY(!app::frmAbout::hasDriverFile([&](std::string_view file) {
            asked.emplace_back(file);
            return false;
        }));
        QVERIFY(asked == kAll);
    }
};

static const testsupport::RunnableTest<DriverFilesTest> kRunnable;
#include "DriverFilesTest.moc"
