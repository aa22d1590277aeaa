#pragma once

#include "app/mainwindow/EditorPane.h"
#include "tables/ui/ParamGrid.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <QWidget>

namespace app {

// The tab page of one table: the grid, and beside it the place of the field editor above the comment box.
class TablePage final : public QWidget
{
    Q_OBJECT

public:
    // The names are those of the grid and of the comment box, and the grid's for a screen reader; the table outlives
    // the page.
    TablePage(tables::ParamTable& table, const QString& gridName, const QString& commentsName,
              const QString& spokenName, QWidget* parent = nullptr);

    [[nodiscard]] tables::ParamGrid& grid() { return *m_grid; }
    [[nodiscard]] QPlainTextEdit& comments() { return *m_comments; }

    // Puts the field editor into its place; the page owns it then.
    void setEditor(QWidget* editor);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    tables::ParamGrid* m_grid = nullptr;
    QPlainTextEdit* m_comments = nullptr;
    QVBoxLayout* m_editColumn = nullptr;
    QHBoxLayout* m_row = nullptr; // the grid, and the column beside it
    EditorPane* m_pane = nullptr;
};

} // namespace app
