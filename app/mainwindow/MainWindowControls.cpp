#include "app/mainwindow/MainWindowControls.h"

#include "app/startup/ProgramText.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/Spoken.h"

#include <QVBoxLayout>

namespace app {

namespace {

constexpr QSize kDesignedSize{1000, 640};

} // namespace

MainWindowControls::MainWindowControls(QMainWindow& mainWindow, const Services& services,
                                       tables::UnsavedChanges& unsaved, tables::EditSession& session)
    : window(mainWindow)
    , menu(*window.menuBar())
    , Toolbar1(new MainToolbar(&window))
    , StatusBar1(*window.statusBar())
    , linkPanel(new LinkPanel(StatusBar1, services.windowOrder, services.programFolder, &window))
    , SSTab1(new QTabWidget(&window))
{
    const TablePage::Surroundings surroundings{
        .status = StatusBar1, .unsaved = unsaved, .session = session, .beep = services.beep, .events = services.events};
    page_CFG = new TablePage(tables::configurationKind(), surroundings, &window);
    page_KB = new TablePage(tables::keyboardLanguageKind(), surroundings, &window);
    // The keyboard walks through the window in the order in which its pieces were made.
    page_ReadTest = new ReadTestPage(&window);
    lblFilename = new FileNameLabel(&window);
    btnNotes = new QPushButton(QStringLiteral("&Notes"), &window);
    layOut();
    connectPages();
}

void MainWindowControls::layOut()
{
    window.setObjectName(QStringLiteral("frmMain"));
    window.setWindowTitle(platform::toQString(kProgramTitle));
    window.setContextMenuPolicy(Qt::NoContextMenu); // it would offer to hide the toolbar
    window.resize(kDesignedSize);
    window.setAcceptDrops(true);
    window.addToolBar(Toolbar1);

    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    platform::setSpoken(*SSTab1, QStringLiteral("Tables and read test"),
                        QStringLiteral("The two parameter tables of the Teslin and the read test"));
    SSTab1->addTab(page_CFG, platform::toQString(tables::configurationKind().caption));
    SSTab1->addTab(page_KB, platform::toQString(tables::keyboardLanguageKind().caption));
    SSTab1->addTab(page_ReadTest, QStringLiteral("Read Test"));
    btnNotes->setObjectName(QStringLiteral("btnNotes"));
    platform::setSpoken(*btnNotes, QStringLiteral("Shows notes on the table"));

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblFilename, 1);
    bottom->addStretch();
    bottom->addWidget(btnNotes);
    auto* central = new QWidget(&window);
    auto* column = new QVBoxLayout(central);
    column->addWidget(linkPanel);
    column->addWidget(SSTab1, 1);
    column->addLayout(bottom);
    window.setCentralWidget(central);
}

void MainWindowControls::connectPages()
{
    for (TablePage* const page : {page_CFG, page_KB}) {
        QObject::connect(page, &TablePage::tabCaptionChanged, SSTab1,
                         [this, page](const QString& caption) { SSTab1->setTabText(SSTab1->indexOf(page), caption); });
        QObject::connect(page, &TablePage::fileForgotten, lblFilename, [this] {
            lblFilename->clear();
            lblFilename->hide();
        });
        QObject::connect(page, &TablePage::editorAboutToHide, &window,
                         [this](const QWidget& editor) { takeKeyboardFrom(editor); });
    }
    // How far the last transfer came is told until the user goes on to something else, and these do nothing while the
    // next one runs. Here, so that it comes before what the entries do.
    for (QAction* const entry : menu.pausedEntries()) {
        QObject::connect(entry, &QAction::triggered, &window, [this] { StatusBar1.hideProgress(); });
    }
    QObject::connect(btnNotes, &QPushButton::clicked, &window, [this] { StatusBar1.hideProgress(); });
    QObject::connect(page_KB, &TablePage::emptyDecEntryShown, page_CFG, &TablePage::showEmptyDecEntry);
    QObject::connect(Toolbar1, &MainToolbar::aboutToDisable, &window, [this] {
        if (window.focusWidget() != Toolbar1->widgetForAction(&Toolbar1->button(ToolbarKey::Exit))) {
            takeKeyboardFrom(*Toolbar1);
        }
    });
    QObject::connect(page_ReadTest, &ReadTestPage::notesButtonHidden, btnNotes, [this] {
        takeKeyboardFrom(*btnNotes);
        btnNotes->hide();
    });
}

void MainWindowControls::showFileName(tables::TableId table)
{
    lblFilename->showFor(table, page(table).document().name());
}

void MainWindowControls::takeKeyboardFrom(const QWidget& controls)
{
    const QWidget* const holder = window.focusWidget();
    if (holder != &controls && !controls.isAncestorOf(holder)) {
        return;
    }
    const auto table = tableOn(SSTab1->currentIndex());
    QWidget& heir = table ? static_cast<QWidget&>(page(*table).grid()) : page_ReadTest->txtReadTest();
    heir.setFocus();
}

} // namespace app
