#pragma once

#include <QLineEdit>

#include <functional>

namespace widgets {

// A text box for one value. Clicking into it selects the value, so that typing replaces it. With a key filter, typed
// characters pass through the filter; what keys do not bring (a text set by the program, the context menu's paste, a
// drop) comes in unfiltered, and no length is imposed.
class EntryBox final : public QLineEdit
{
    Q_OBJECT

public:
    // Gets the Windows-1252 code of a typed character and changes it into the code to use instead, 0 to discard the
    // key.
    using KeyFilter = std::function<void(int& KeyAscii)>;

    // Wide enough for a number of digits.
    EntryBox(const QString& name, int digits, QWidget* parent);

    void setKeyFilter(KeyFilter filter);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] QString filtered(const QString& typed) const;

    KeyFilter m_keyFilter;
    int m_digits;
    bool m_selectOnRelease = false;
};

} // namespace widgets
