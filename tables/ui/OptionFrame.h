#pragma once

#include "tables/BitFields.h"

#include <QGroupBox>

#include <optional>
#include <string_view>

class QButtonGroup;

namespace tables {

// The frame around one bit field's option buttons. The button group bears the array's name, its buttons the same with
// "_" and their index.
class OptionFrame final : public QGroupBox
{
    Q_OBJECT

public:
    // The suffix goes behind the field's names, for fields that more than one editor shows. The field outlives the
    // frame.
    OptionFrame(const BitField& field, std::string_view suffix, QWidget* parent);

    [[nodiscard]] const BitField& field() const { return m_field; }

    // Selects the option that a value text shows, or none. Emits nothing.
    void load(std::string_view value);

signals:
    void optionClicked(int Index); // by the user, selected already or not

private:
    void addButton(const BitOption& option, int index, const QString& name);

    const BitField& m_field;
    QButtonGroup* m_array = nullptr;
};

} // namespace tables
