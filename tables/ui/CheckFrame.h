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
    // The checks outlive the frame.
    CheckFrame(const BitChecks& checks, QWidget* parent);

    [[nodiscard]] std::string_view address() const { return m_address; }
    [[nodiscard]] bool isChecked(const BitCheck& check) const;

    // Checks the boxes whose bit is set. Emits no click.
    void load(std::uint8_t byte);

signals:
    void checkClicked(const tables::BitCheck* check); // by the user

private:
    void addCheck(const BitCheck& check);

    std::string_view m_address;
    std::vector<std::pair<const BitCheck*, QCheckBox*>> m_checks;
};

} // namespace tables
