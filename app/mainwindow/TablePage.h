#pragma once

#include "app/mainwindow/EditorPane.h"
#include "files/TableDocument.h"
#include "platform/Beep.h"
#include "platform/EventPump.h"
#include "platform/MessageBoxes.h"
#include "tables/DeviceSender.h"
#include "tables/LiveTable.h"
#include "tables/ui/ParamGrid.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <QWidget>

namespace app {

// The tab page of one table: its rows, the grid that shows them, beside it the field editor above the comment box, and
// the document that is saved and loaded.
class TablePage final : public QWidget, public tables::TableDisplay, public files::CommentBox
{
    Q_OBJECT

public:
    // What a page works with beside its own pieces. All of it outlives the page.
    struct Surroundings
    {
        tables::StatusLine& status;
        tables::UnsavedChanges& unsaved;
        tables::EditSession& session;
        platform::Beep& beep;
        platform::EventPump& events;
    };

    TablePage(const tables::TableKind& kind, const Surroundings& surroundings, QWidget* parent = nullptr);

    // The grid and the editor go while the table that they look at is still here.
    ~TablePage() override;

    // Builds the field editor, which sends rows through the device. To be called once, before anything else is asked of
    // the page; both outlive it.
    void addEditor(tables::DeviceSender& device, platform::MessageBoxes& boxes);

    [[nodiscard]] tables::LiveTable& table() { return m_live; }
    [[nodiscard]] files::TableDocument& document() { return m_document; }
    [[nodiscard]] tables::ParamGrid& grid() { return *m_grid; }

    void setTabCaption(std::string_view caption) override;
    void forgetCommentsAndFile() override;
    void beep() override;
    void processPendingEvents() override;
    [[nodiscard]] std::string comments() const override;
    void setComments(std::string_view text) override;

    // Shows the Configuration editor's line of words without any; nothing on the other page.
    void showEmptyDecEntry();

signals:
    void tabCaptionChanged(const QString& caption);
    void fileForgotten();
    // The controls of this editor are about to be hidden.
    void editorAboutToHide(const QWidget& editor);
    // The Configuration editor's line of words has a place in this page's editor, and is left empty.
    void emptyDecEntryShown();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addConfigurationEditor(tables::DeviceSender& device, platform::MessageBoxes& boxes);
    void addKeyboardLanguageEditor(tables::DeviceSender& device, platform::MessageBoxes& boxes);
    void place(QWidget& editor);

    Surroundings m_surroundings;
    tables::ParamTable m_rows;
    tables::ParamGrid* m_grid = nullptr;
    tables::LiveTable m_live;
    QPlainTextEdit* m_comments = nullptr;
    files::TableDocument m_document;
    QVBoxLayout* m_editColumn = nullptr;
    QHBoxLayout* m_row = nullptr; // the grid, and the column beside it
    EditorPane* m_pane = nullptr;
};

} // namespace app
