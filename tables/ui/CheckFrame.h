#pragma once

#include "tables/BitFields.h"

#include <QGroupBox>

#include <cstdint>
#include <utility>
#include <vector>

class QCheckBox;

namespace tables {

// A frame of check boxes for the single bits of one byte.
class CheckFrame final : public QGroupBox
{
    Q_OBJECT

public:
    CheckFrame(const QString& name, const QString& caption, QWidget* parent);

    // Adds a box below the others. The check outlives the frame.
    QCheckBox* addCheck(const BitCheck& check);

    // Checks the boxes whose bit is set. Emits no click.
    void load(std::uint8_t byte);

private:
    std::vector<std::pair<const BitCheck*, QCheckBox*>> m_checks;
};

} // namespace tables
