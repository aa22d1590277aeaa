#include "tables/ui/FrameColumn.h"

#include <QGroupBox>
#include <QVBoxLayout>

namespace tables {

void layOutInColumn(QGroupBox& frame)
{
    const int lineHeight = frame.fontMetrics().height();
    auto* column = new QVBoxLayout(&frame);
    column->setContentsMargins(lineHeight * 2 / 3, lineHeight / 3, lineHeight * 2 / 3, lineHeight / 3);
    column->setSpacing(lineHeight / 5);
}

} // namespace tables
