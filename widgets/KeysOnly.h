#pragma once

#include <QLineEdit>

namespace widgets {

// Lets nothing into a text box but single keys: no paste, no drop, no composed text. Enter and Escape stay in the box,
// where they do nothing; in a dialog they would press a button or close it. Tab and the keys that move and edit pass.
class KeysOnly final : public QObject
{
    Q_OBJECT

public:
    // Belongs to the box.
    explicit KeysOnly(QLineEdit& box);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace widgets
