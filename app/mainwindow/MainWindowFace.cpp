#include "app/mainwindow/MainWindowFace.h"

#include "app/startup/ProgramText.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/Spoken.h"

#include <QCoreApplication>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr QSize kDesignedSize{1000, 640};

QString words(const char* text)
{
    return QCoreApplication::translate("MainWindowFace", text);
}

void setUpWindow(QMainWindow& window)
{
    window.setObjectName(QStringLiteral("frmMain"));
    window.setWindowTitle(platform::toQString(kProgramTitle));
    window.setContextMenuPolicy(Qt::NoContextMenu); // it would offer to hide the toolbar
    window.resize(kDesignedSize);
    window.setAcceptDrops(true);
}

} // namespace

MainWindowFace::MainWindowFace(QMainWindow& window, tables::ParamTable& table_CFG, tables::ParamTable& table_KB)
    : menu(*window.menuBar())
    , Toolbar1(new MainToolbar(&window))
    , StatusBar1(*window.statusBar())
    , identification(new IdentificationStrip(&window))
    , SSTab1(new QTabWidget(&window))
    , page_CFG(new TablePage(table_CFG, QStringLiteral("grdCFG"), QStringLiteral("txtComments_CFG"),
                             words("Configuration table"), &window))
    , page_KB(new TablePage(table_KB, QStringLiteral("grdKB"), QStringLiteral("txtComments_KB"),
                            words("Keyboard Language table"), &window))
    , page_ReadTest(new ReadTestPage(&window))
    , lblFilename(new FileNameLabel(&window))
    , btnNotes(new QPushButton(words("&Notes"), &window))
{
    setUpWindow(window);
    window.addToolBar(Toolbar1);

    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    platform::setSpoken(*SSTab1, words("Tables and read test"),
                        words("The two parameter tables of the Teslin and the read test"));
    SSTab1->addTab(page_CFG, platform::toQString(tables::configurationKind().caption));
    SSTab1->addTab(page_KB, platform::toQString(tables::keyboardLanguageKind().caption));
    SSTab1->addTab(page_ReadTest, words("Read Test"));
    btnNotes->setObjectName(QStringLiteral("btnNotes"));
    platform::setSpoken(*btnNotes, words("Shows notes on the table"));

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lblFilename, 1);
    bottom->addStretch();
    bottom->addWidget(btnNotes);
    auto* central = new QWidget(&window);
    auto* column = new QVBoxLayout(central);
    column->addWidget(identification);
    column->addWidget(SSTab1, 1);
    column->addLayout(bottom);
    window.setCentralWidget(central);
}

} // namespace app
