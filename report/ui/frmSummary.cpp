#include "report/ui/frmSummary.h"

#include "platform/qt/AnsiText.h"
#include "platform/qt/FrontWindow.h"
#include "platform/qt/Spoken.h"
#include "report/PrintedLines.h"

#include <QEvent>
#include <QGridLayout>
#include <QMargins>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>
#include <string>
#include <utility>

namespace report {

namespace {

// What the window shows of a report before it is resized: all columns of the widest line and a good part of its lines.
constexpr int kColumns = 86;
constexpr int kLines = 36;

constexpr QMargins kRoomForFrame(16, 48, 16, 16); // which a window has once it is shown

QPushButton* makeButton(const char* name, const QString& caption, QWidget* parent)
{
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(true); // so that Enter presses the button that has the focus
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    return button;
}

QSize designedSize(const SummaryBox& box)
{
    const QFontMetrics metrics = box.fontMetrics();
    const int edges = 2 * (box.frameWidth() + static_cast<int>(box.document()->documentMargin()));
    const QSize text(metrics.horizontalAdvance(QLatin1Char('0')) * kColumns, metrics.lineSpacing() * kLines);
    return text + QSize(edges + box.verticalScrollBar()->sizeHint().width(), edges);
}

} // namespace

frmSummary::frmSummary(SummaryServices services, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_services(std::move(services))
{
    setObjectName(QStringLiteral("frmSummary"));
    setWindowTitle(QStringLiteral("Configuration Summary"));
    setAttribute(Qt::WA_QuitOnClose, false);
    buildWindow();
    connect(btnPrint, &QPushButton::clicked, this, &frmSummary::btnPrint_Click);
    connect(btnSave, &QPushButton::clicked, this, &frmSummary::btnSave_Click);
    connect(btnDone, &QPushButton::clicked, this, &frmSummary::btnDone_Click);
}

void frmSummary::buildWindow()
{
    txtSummary = new SummaryBox(this);
    txtSummary->setObjectName(QStringLiteral("txtSummary"));
    btnPrint = makeButton("btnPrint", QStringLiteral("&Print Summary"), this);
    btnSave = makeButton("btnSave", QStringLiteral("&Save  Summary to file"), this);
    btnDone = makeButton("btnDone", QStringLiteral("&Done"), this);

    platform::setSpoken(*txtSummary, QStringLiteral("Summary"),
                        QStringLiteral("The report; what is changed here is printed and saved as it is"));
    platform::setSpoken(*btnPrint, QStringLiteral("Prints the text above"));
    platform::setSpoken(*btnSave, QStringLiteral("Writes the text above to a file"));
    platform::setSpoken(*btnDone, QStringLiteral("Closes the summary"));

    auto* ReSize1 = new QGridLayout(this);
    ReSize1->setObjectName(QStringLiteral("ReSize1"));
    ReSize1->addWidget(txtSummary, 0, 0, 1, 3);
    int column = 0;
    for (QPushButton* button : {btnPrint, btnSave, btnDone}) {
        ReSize1->addWidget(button, 1, column);
        ReSize1->setColumnStretch(column, 1);
        ++column;
    }
    // Box and buttons keep their proportion at every size of the window that has room for the captions.
    ReSize1->setRowStretch(0, designedSize(*txtSummary).height());
    ReSize1->setRowStretch(1, btnDone->sizeHint().height());
}

void frmSummary::open()
{
    if (!isVisible()) {
        Form_Load();
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    platform::showInFront(*this, m_services.windowOrder);
}

void frmSummary::Form_Load()
{
    setWindowState(Qt::WindowNoState);
    const QRect available = screen()->availableGeometry().marginsRemoved(kRoomForFrame);
    const QMargins margins = layout()->contentsMargins();
    const QSize box = designedSize(*txtSummary);
    const int belowBox = layout()->spacing() + btnDone->sizeHint().height();
    resize((box.grownBy(margins) + QSize(0, belowBox)).boundedTo(available.size()));
    move(available.center() - rect().center());
    m_services.restorePlacement(*this);
}

void frmSummary::showReport(const QString& caption, std::string_view report)
{
    setWindowTitle(caption);
    btnPrint->setEnabled(m_services.printer.setFontName(SummaryBox::kFontName));
    txtSummary->setText(report);
    txtSummary->moveCaretToEnd();
    txtSummary->setFocus();
}

void frmSummary::Form_Resize()
{
    m_services.savePlacement(*this);
}

void frmSummary::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Form_Resize();
}

void frmSummary::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // Minimising resizes nothing, and maximising may tell the new size before the new state.
    if (event->type() == QEvent::WindowStateChange && isVisible()) {
        Form_Resize();
    }
}

void frmSummary::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    // The system hides a window too, when the user minimises it; it counts as open then.
    if (!event->spontaneous()) {
        emit unloaded();
    }
}

void frmSummary::btnPrint_Click()
{
    int copies = m_services.printer.askForCopies().value_or(0);
    while (copies > 0 && printDocument()) {
        --copies;
    }
}

// Prints what the box holds. False when the job could not be finished.
bool frmSummary::printDocument()
{
    platform::Printer& printer = m_services.printer;
    if (!printer.beginDocument(platform::toAnsi(windowTitle()))) {
        return false;
    }
    const PrintedLines printed = printedLines(txtSummary->text());
    const bool allPrinted = std::all_of(printed.lines.begin(), printed.lines.end(),
                                        [&printer](const std::string& line) { return printer.printLine(line); });
    if (!allPrinted || printed.end == PrintEnd::UnfinishedLine) {
        printer.abortDocument();
        return false;
    }
    return printer.endDocument();
}

// Kept behaviour kb-summary-replaces: no question about a file that is there, and no word about the outcome.
void frmSummary::btnSave_Click()
{
    const std::filesystem::path file = m_services.dialogs.chooseFileToSave(
        {.folder = m_services.programFolder, .name = "*.txt", .filter = "Teslin Summary (*.txt)"});
    // A name with a star is the dialog's own pattern, left as it was.
    if (file.empty() || file.filename().native().find('*') != std::filesystem::path::string_type::npos) {
        return;
    }
    m_services.saveFile(file, txtSummary->text() + "\r\n");
}

void frmSummary::btnDone_Click()
{
    close();
}

} // namespace report
