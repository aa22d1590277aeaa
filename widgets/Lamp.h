#pragma once

#include <QColor>
#include <QWidget>

namespace widgets {

// An indicator of the link: a round lamp in one of two colours.
class Lamp final : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QColor fillColor READ fillColor)
    Q_PROPERTY(bool lit READ isLit)

public:
    Lamp(QColor lit, QColor dark, QWidget* parent = nullptr);

    // Repaints at once when the state changes.
    void setLit(bool lit);
    [[nodiscard]] bool isLit() const { return m_isLit; }
    [[nodiscard]] QColor fillColor() const { return m_isLit ? m_lit : m_dark; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_lit;
    QColor m_dark;
    bool m_isLit = false;
};

} // namespace widgets
