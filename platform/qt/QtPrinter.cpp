#include "platform/qt/QtPrinter.h"

#include "platform/qt/AnsiText.h"
#include "platform/qt/ColumnFont.h"
#include "platform/qt/FrontWindow.h"
#include "platform/qt/PrintedPages.h"
#include "platform/qt/VisibleText.h"

#include <QPrintDialog>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

// Without a printer Qt's device writes PDF files. That is a printer where the dialog offers the file; the dialog of
// Windows needs a real one.
bool canPrint(const QPrinter& device)
{
#ifdef Q_OS_WIN
    return device.outputFormat() == QPrinter::NativeFormat && device.isValid();
#else
    return device.isValid();
#endif
}

// The pages that the user asked for in the dialog, in the order asked for.
QList<int> chosenPages(const QPrinter& device, int count)
{
    const bool isRange = device.printRange() == QPrinter::PageRange;
    const int first = isRange ? std::max(1, device.fromPage()) : 1;
    const int last = isRange ? std::min(count, device.toPage()) : count;
    QList<int> pages;
    for (int page = first; page <= last; ++page) {
        pages.append(page);
    }
    if (device.pageOrder() == QPrinter::LastPageFirst) {
        std::reverse(pages.begin(), pages.end());
    }
    return pages;
}

} // namespace

QPrinter& QtPrinter::device()
{
    if (!m_device) {
        m_device = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    return *m_device;
}

bool QtPrinter::setFontName(std::string_view family)
{
    if (m_device && !canPrint(*m_device)) {
        m_device.reset(); // a printer may have come since
    }
    m_font = columnFont(toQString(family));
    return canPrint(device());
}

std::optional<int> QtPrinter::askForCopies()
{
    QPrintDialog dialog(&device(), frontWindow());
    comeUpAboveParent(dialog);
    dialog.setObjectName(QStringLiteral("printDialog"));
    // Copies that are documents of their own are always collated.
    dialog.setOption(QAbstractPrintDialog::PrintCollateCopies, false);
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    const int copies = device().copyCount();
    device().setCopyCount(1);
    return copies;
}

bool QtPrinter::beginDocument(std::string_view name)
{
    m_document.reset();
    if (!canPrint(device())) {
        return false;
    }
    m_document = Document{toQString(name), {}};
    return true;
}

bool QtPrinter::printLine(std::string_view line)
{
    if (!m_document) {
        return false;
    }
    m_document->lines.append(toVisible(line));
    return true;
}

bool QtPrinter::endDocument()
{
    const std::optional<Document> document = std::exchange(m_document, std::nullopt);
    if (!document) {
        return false;
    }
    device().setDocName(document->name);
    const PrintedPages pages(device(), m_font, document->lines);
    return pages.draw(chosenPages(device(), pages.count())) && device().printerState() != QPrinter::Error;
}

void QtPrinter::abortDocument()
{
    m_document.reset();
}

} // namespace platform
