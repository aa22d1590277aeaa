#include "tests/support/MainWindowFixture.h"

#include <QAction>
#include <QElapsedTimer>

#include <algorithm>
#include <array>
#include <cstdio>

using namespace testsupport;

// How long the main window is away while it opens a file of 50 MB, of every kind that has no business in a table. Each
// file goes through the File menu on both tabs; the time ends when the window has been painted again. Exit status 1
// when one takes a second or more, or when the table has other rows than the file.
namespace {

constexpr qsizetype kSize = qsizetype{50} * 1024 * 1024;
constexpr qint64 kLongest = 1000; // milliseconds

struct HostileFile
{
    const char* what;
    QByteArray unit; // repeated to the full size
    int rows_CFG;
    int rows_KB;
};

std::array<HostileFile, 11> hostileFiles()
{
    QByteArray everyByte;
    for (int i = 0; i < 4096; ++i) {
        everyByte.append(static_cast<char>((i * 7919) >> 3));
    }
    return {{{"rows", "083,10,1E ;a A\r\n", 255, 255},
             {"one line", "x", 0, 1},
             {"one line of notes", "Comments,\r\n083,10,1E ;" + QByteArray(kSize, 'n'), 1, 2},
             {"lines of 1 MB", "083,10,1E ;" + QByteArray(qsizetype{1024} * 1024, 'n') + "\r\n", 49, 50},
             {"NUL bytes", QByteArray(1, '\0'), 0, 1},
             {"line feeds", "\n", 0, 0},
             {"carriage returns", "\r", 0, 0},
             {"lines of one letter", "x\n", 0, 255},
             {"comment lines", ";comment\r\n", 0, 0},
             {"empty comment lines", ";\n", 0, 0},
             {"bytes of every value", everyByte, -1, -1}}};
}

// How many milliseconds it takes to read the file and do nothing with it.
qint64 readingAlone(const std::filesystem::path& name)
{
    QElapsedTimer timer;
    timer.start();
    QFile file(platform::pathText(name));
    if (!file.open(QIODevice::ReadOnly) || file.readAll().size() != kSize) {
        return -1;
    }
    return timer.elapsed();
}

bool opensInTime(MainWindowFixture& f, const HostileFile& hostile)
{
    const std::filesystem::path name = platform::toPath(f.folder.filePath(QStringLiteral("hostile")));
    QFile file(platform::pathText(name));
    const QByteArray bytes = hostile.unit.repeated(kSize / hostile.unit.size() + 1).first(kSize);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != kSize) {
        std::printf("cannot write %s\n", qPrintable(file.fileName()));
        return false;
    }
    file.close();
    const qint64 reading = readingAlone(name);
    bool inTime = true;
    for (const bool isConfiguration : {true, false}) {
        f.dialogs.expect(TestFileDialogs::Kind::Open, name);
        QElapsedTimer timer;
        timer.start();
        f.find<QAction>(isConfiguration ? "mnuOpen_CFG" : "mnuOpen_KB")->trigger();
        QCoreApplication::processEvents();
        const qint64 elapsed = timer.elapsed();
        const int rows = isConfiguration ? f.table_CFG().NumParms : f.table_KB().NumParms;
        const int expected = isConfiguration ? hostile.rows_CFG : hostile.rows_KB;
        const bool isRight = expected < 0 || rows == expected;
        std::printf("    %-22s %-22s %4lld ms, reading alone %3lld ms, %3d rows%s%s\n", hostile.what,
                    isConfiguration ? "Configuration" : "Keyboard Language", static_cast<long long>(elapsed),
                    static_cast<long long>(reading), rows, elapsed < kLongest ? "" : "  TOO SLOW",
                    isRight ? "" : "  WRONG ROWS");
        inTime = inTime && elapsed < kLongest && isRight && reading >= 0;
    }
    return inTime;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    MainWindowFixture f;
    f.start();
    std::printf("Opening a file of 50 MB\n");
    const auto files = hostileFiles();
    const auto slow =
        std::count_if(files.begin(), files.end(), [&f](const auto& file) { return !opensInTime(f, file); });
    return slow == 0 ? 0 : 1;
}
