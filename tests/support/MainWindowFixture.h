#pragma once

#include "app/mainwindow/frmMain.h"
#include "platform/qt/PathText.h"
#include "platform/qt/QtEventPump.h"
#include "simulator/ReaderModel.h"
#include "tables/ui/ConfigurationEditor.h"
#include "tables/ui/KeyboardLanguageEditor.h"
#include "tests/support/CountingBeep.h"
#include "tests/support/RecordingWindowOrder.h"
#include "tests/support/SystemTools.h"
#include "tests/support/TestFileDialogs.h"
#include "tests/support/TestMessageBoxes.h"
#include "tests/support/TestPrinter.h"
#include "tests/support/WindowReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <memory>

namespace testsupport {

class FixedClock final : public platform::Clock
{
public:
    [[nodiscard]] std::chrono::year_month_day today() const override
    {
        return std::chrono::year(2024) / std::chrono::March / std::chrono::day(9);
    }
};

// The real main window on a scripted reader, in a folder of its own. Ticks come every millisecond instead of every
// fifty, so the whole timing is the product's own, only faster.
class MainWindowFixture
{
public:
    MainWindowFixture()
    {
        QFile file(driverFile());
        driverFileExists = QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly);
        reader.answers = [this](const std::string& command) { return model.answerTo(command); };
    }

    // Builds the window and runs its start-up.
    app::frmMain& start(std::string commandLine = {})
    {
        window.reset();
        dosNames = std::make_unique<platform::DosNames>(platform::toPath(folder.filePath(QStringLiteral("dos"))));
        settings = std::make_unique<platform::ProfileStrings>(settingsFile());
        window = std::make_unique<app::frmMain>(app::Services{.MSComm1 = reader,
                                                              .driver = driver,
                                                              .boxes = boxes,
                                                              .fileDialogs = dialogs,
                                                              .printer = printer,
                                                              .clock = clock,
                                                              .beep = beep,
                                                              .events = *pump,
                                                              .settings = *settings,
                                                              .dosNames = *dosNames,
                                                              .registry = registry,
                                                              .programs = programs,
                                                              .windowOrder = *order,
                                                              .programFolder = platform::toPath(folder.path()),
                                                              .commandLine = std::move(commandLine),
                                                              .tickMilliseconds = tickMilliseconds});
        window->Form_Load();
        // The window system of the tests gives the keyboard to every window that is shown, the splash too; what asks
        // for it back comes with the next events.
        (void)QTest::qWaitFor([this] { return window->isActiveWindow() || !window->isVisible(); }, 1000);
        return *window;
    }

    // On the drive C of this test; on Windows there is but one.
    [[nodiscard]] QString driverFile() const
    {
#ifdef Q_OS_WIN
        const QString drive = QStringLiteral("C:");
#else
        const QString drive = folder.filePath(QStringLiteral("dos/c:"));
#endif
        return drive + QStringLiteral("/Windows/system32/drivers/Teslin.sys");
    }

    [[nodiscard]] std::filesystem::path settingsFile() const
    {
        return platform::toPath(folder.filePath(QStringLiteral("TeslinConfigure.INI")));
    }

    template <typename Control>
    [[nodiscard]] Control* find(const char* name) const
    {
        return window->findChild<Control*>(QLatin1String(name));
    }
    [[nodiscard]] QString textOf(const char* label) const
    {
        return find<QLabel>(label)->text();
    }
    void press(const char* key) const
    {
        QTest::mouseClick(find<QToolButton>(key), Qt::LeftButton);
    }
    [[nodiscard]] tables::ParamTable& table_CFG() const
    {
        return window->paramTables().CFG.table();
    }
    [[nodiscard]] tables::ParamTable& table_KB() const
    {
        return window->paramTables().KB.table();
    }

    // The page of a table.
    [[nodiscard]] app::TablePage& page(tables::TableId table) const
    {
        const auto pages = window->findChildren<app::TablePage*>();
        const auto isOf = [table](app::TablePage* page) { return page->document().id() == table; };
        return **std::ranges::find_if(pages, isOf);
    }
    // A file as if it had just been loaded or saved.
    void rememberFile(app::Tab tab, const std::filesystem::path& name) const
    {
        const tables::TableId table = *app::tableOn(tab);
        page(table).document().remember(name);
        const auto* tabs = find<QTabWidget>("SSTab1");
        find<app::FileNameLabel>("lblFilename")
            ->showFor(*app::tableOn(tabs->currentIndex()), page(*app::tableOn(tabs->currentIndex())).document().name());
    }
    // The tab that everything works on.
    [[nodiscard]] int tabInEffect() const
    {
        const auto table = window->paramTables().session.tableInEffect;
        return table ? int{app::tabOf(*table)} : int{app::kReadTestTab};
    }
    [[nodiscard]] app::LinkPanel& linkPanel() const
    {
        return *window->findChild<app::LinkPanel*>();
    }
    [[nodiscard]] tables::ConfigurationEditor& editor_CFG() const
    {
        return *window->findChild<tables::ConfigurationEditor*>();
    }
    [[nodiscard]] tables::KeyboardLanguageEditor& editor_KB() const
    {
        return *window->findChild<tables::KeyboardLanguageEditor*>();
    }

    int tickMilliseconds = 1; // 0: ticks come from the test
    QTemporaryDir folder;
    bool driverFileExists = false;
    simulator::ReaderModel model;
    WindowReader reader;
    WindowDriver driver;
    TestMessageBoxes boxes;
    TestFileDialogs dialogs;
    TestPrinter printer;
    FixedClock clock;
    CountingBeep beep;
    platform::QtEventPump events;
    platform::EventPump* pump = &events; // or one of the test's
    FakeRegistry registry;
    RecordingStart programs;
    RecordingWindowOrder windowOrder;
    platform::WindowOrder* order = &windowOrder; // or one of the test's
    std::unique_ptr<platform::DosNames> dosNames;
    std::unique_ptr<platform::ProfileStrings> settings;
    std::unique_ptr<app::frmMain> window;
};

} // namespace testsupport
