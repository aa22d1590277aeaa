#pragma once

#include <QScrollArea>

namespace app {

// The place of a field editor beside its grid. Scrolls when the window is too small for the editor's tallest row.
class EditorPane final : public QScrollArea
{
    Q_OBJECT

public:
    // The pane owns the editor, whose minimum size has room for every row.
    EditorPane(QWidget& editor, QWidget* parent);

    // Room for the whole editor.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
};

} // namespace app
