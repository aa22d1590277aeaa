#pragma once

#include "platform/FileDialogs.h"
#include "platform/Printer.h"
#include "platform/qt/WindowOrder.h"
#include "report/ui/SummaryBox.h"

#include <QPushButton>
#include <QWidget>

#include <filesystem>
#include <functional>
#include <string_view>

namespace report {

// Gives a file its content, whether it exists or not, without a question. False when it could not.
using SaveFile = std::function<bool(const std::filesystem::path& file, std::string_view bytes)>;

// What the summary window uses of the system. Everything outlives the window.
struct SummaryServices
{
    platform::Printer& printer;
    platform::FileDialogs& dialogs;
    platform::WindowOrder& windowOrder;
    SaveFile saveFile;
    // Gives a window that is not shown yet its last position and size; false, and the window as it was, without any.
    std::function<bool(QWidget&)> restorePlacement;
    // Remembers position, size and state of a window. Tells no errors.
    std::function<void(const QWidget&)> savePlacement;
    std::filesystem::path programFolder; // where the save dialog starts
};

// The window that shows a report, prints it and saves it. Closing it, in whichever way, only hides it.
class frmSummary final : public QWidget
{
    Q_OBJECT

public:
    explicit frmSummary(SummaryServices services, QWidget* parent = nullptr);

    // Shows the window where it stood last time. One that is open already stays where it is and comes to the front.
    void open();

    // Puts a report in place of the one that is shown, and the caret behind it. Printing is possible if the printer has
    // the report's font.
    void showReport(const QString& caption, std::string_view report);

signals:
    // The window has been closed.
    void unloaded();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void buildWindow();
    void Form_Load();
    void Form_Resize();
    void btnPrint_Click();
    void btnSave_Click();
    void btnDone_Click();
    [[nodiscard]] bool printDocument();

    SummaryServices m_services;
    SummaryBox* txtSummary = nullptr;
    QPushButton* btnPrint = nullptr;
    QPushButton* btnSave = nullptr;
    QPushButton* btnDone = nullptr;
};

} // namespace report
