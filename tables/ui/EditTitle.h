#pragma once

#include "widgets/PlainLabel.h"

namespace tables {

// The title above an editor's controls: one line, any width. A title that does not fit is drawn with dots at its end;
// text() is always the whole title.
class EditTitle final : public widgets::PlainLabel
{
    Q_OBJECT

public:
    EditTitle(const QString& name, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tables
