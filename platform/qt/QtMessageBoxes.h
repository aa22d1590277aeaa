#pragma once

#include "platform/MessageBoxes.h"

#include <QString>

namespace platform {

// Message boxes as real windows, over whichever window of the program is active.
class QtMessageBoxes final : public MessageBoxes
{
public:
    // The title of boxes that have none of their own.
    explicit QtMessageBoxes(QString programTitle)
        : m_programTitle(std::move(programTitle))
    {}

    BoxAnswer show(const MessageBox& box) override;

private:
    QString m_programTitle;
};

} // namespace platform
