#include "tests/support/MainWindowFixture.h"
#include "tests/support/RunnableTest.h"

#include <QFile>
#include <QTest>
#include <QTimer>

#ifdef Q_OS_LINUX
#include <sys/inotify.h>
#include <unistd.h>
#endif

using testsupport::MainWindowFixture;

namespace {

QByteArray bytesOf(const std::filesystem::path& path)
{
    QFile file(platform::pathText(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

#ifdef Q_OS_LINUX
// How often a file of a folder was put into its place.
class Writes final
{
public:
    explicit Writes(const std::filesystem::path& file)
        : m_name(QByteArray::fromStdString(file.filename().string()))
        , m_watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (::inotify_add_watch(m_watch, file.parent_path().c_str(), IN_MOVED_TO) < 0) {
            qFatal("the folder cannot be watched");
        }
    }
    ~Writes() { ::close(m_watch); }
    Writes(const Writes&) = delete;
    Writes& operator=(const Writes&) = delete;

    [[nodiscard]] int count() const
    {
        int count = 0;
        alignas(inotify_event) char buffer[65536];
        const ssize_t size = ::read(m_watch, buffer, sizeof buffer);
        for (ssize_t at = 0; at < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            count += event->len > 0 && m_name == event->name ? 1 : 0;
            at += static_cast<ssize_t>(sizeof *event + event->len);
        }
        return count;
    }

private:
    QByteArray m_name;
    int m_watch;
};
#endif

} // namespace

// The settings file as the real window writes it at its end.
class SettingsFileTest final : public QObject
{
    Q_OBJECT

private slots:
    void aFreshFile()
    {
        MainWindowFixture f;
        f.start();
        f.window->resize(760, 710);
        f.window->move(20, 30);
        QVERIFY(f.window->close());
        QCOMPARE(bytesOf(f.settingsFile()), "[Select_Window_frmMain]\r\n"
                                            "Settings=20,30,760,710\r\n"
                                            "WindowState=0\r\n"
                                            "[Name]\r\n"
                                            "Friendly Name=Teslin\r\n"
                                            "[Port]\r\n"
                                            "Virtual Port=COM5\r\n");
    }

    void itIsWrittenOnce_data()
    {
        QTest::addColumn<bool>("withSummary");
        QTest::newRow("alone") << false;
        QTest::newRow("with the summary's placement") << true;
    }
    void itIsWrittenOnce()
    {
#ifdef Q_OS_LINUX
        QFETCH(bool, withSummary);
        MainWindowFixture f;
        f.start();
        const Writes writes(f.settingsFile());
        if (withSummary) {
            // The press returns when the summary has been closed, with the main window.
            QTimer::singleShot(0, f.window.get(), [&f] { f.window->close(); });
            f.press("KEY_SUMMARY");
        } else {
            QVERIFY(f.window->close());
        }
        QCOMPARE(writes.count(), 1);
        QVERIFY(bytesOf(f.settingsFile()).contains("[Port]"));
        QCOMPARE(bytesOf(f.settingsFile()).contains("[Select_Window_frmSummary]"), withSummary);
#else
        QSKIP("how often a file is written is watched elsewhere");
#endif
    }

    void nothingIsWrittenWhenNothingIsNew()
    {
#ifdef Q_OS_LINUX
        MainWindowFixture f;
        f.start();
        f.window->resize(760, 710);
        f.window->move(20, 30);
        QVERIFY(f.window->close());
        f.start();
        const Writes writes(f.settingsFile());
        QVERIFY(f.window->close());
        QCOMPARE(writes.count(), 0);
#else
        QSKIP("how often a file is written is watched elsewhere");
#endif
    }
};

static const testsupport::RunnableTest<SettingsFileTest> kRunnable;
#include "SettingsFileTest.moc"
