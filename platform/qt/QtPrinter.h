#pragma once

#include "platform/Printer.h"

#include <QFont>
#include <QPrinter>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace platform {

// The printer behind Qt's print dialog, which also prints to PDF files. What the user chose in the dialog holds until
// the program ends.
//
// A document is held back until it ends: the spoolers that Qt knows cannot take a started job back.
class QtPrinter final : public Printer
{
public:
    [[nodiscard]] bool setFontName(std::string_view family) override;
    [[nodiscard]] std::optional<int> askForCopies() override;
    [[nodiscard]] bool beginDocument(std::string_view name) override;
    [[nodiscard]] bool printLine(std::string_view line) override;
    [[nodiscard]] bool endDocument() override;
    void abortDocument() override;

    // The device itself, for those who choose paper or file without the dialog. Made when it is first needed, because
    // asking the system for its printers takes time.
    [[nodiscard]] QPrinter& device();

private:
    struct Document
    {
        QString name;
        QStringList lines;
    };

    std::unique_ptr<QPrinter> m_device;
    QFont m_font;
    std::optional<Document> m_document;
};

} // namespace platform
