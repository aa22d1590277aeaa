#include "app/mainwindow/ToolbarIcon.h"

#include "app/looks/ProductPicture.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include <array>

namespace app {

namespace {

constexpr std::array<int, 3> kDrawnSizes = {24, 48, 72};

// The smallest picture that needs no enlarging, else the largest.
int drawnSizeFor(QSize size)
{
    for (const int drawn : kDrawnSizes) {
        if (drawn >= size.width() && drawn >= size.height()) {
            return drawn;
        }
    }
    return kDrawnSizes.back();
}

int between(int from, int to, int part)
{
    return from + (to - from) * part / 255;
}

// The drawings are black, for the first tone, and red, for the second.
QImage inTones(QImage drawing, QColor first, QColor second)
{
    drawing.convertTo(QImage::Format_ARGB32);
    for (int y = 0; y < drawing.height(); ++y) {
        for (int x = 0; x < drawing.width(); ++x) {
            const QRgb pixel = drawing.pixel(x, y);
            const int red = qRed(pixel);
            drawing.setPixel(x, y,
                             qRgba(between(first.red(), second.red(), red), between(first.green(), second.green(), red),
                                   between(first.blue(), second.blue(), red), qAlpha(pixel)));
        }
    }
    return drawing;
}

// Asks for the palette at each painting, so it follows when the system's colours change.
class TwoToneEngine final : public QIconEngine
{
public:
    explicit TwoToneEngine(QString name)
        : m_name(std::move(name))
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal scale = painter->device() != nullptr ? painter->device()->devicePixelRatio() : 1.0;
        painter->drawPixmap(rect, scaledPixmap(rect.size() * scale, mode, state, scale));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1.0);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, [[maybe_unused]] QIcon::State state, qreal scale) override
    {
        const QPalette palette = QGuiApplication::palette();
        const bool isDisabled = mode == QIcon::Disabled;
        const auto group = isDisabled ? QPalette::Disabled : QPalette::Active;
        const QColor text = palette.color(group, QPalette::ButtonText);
        const QColor accent = isDisabled ? text : palette.color(group, QPalette::Highlight);
        const QImage drawing(QStringLiteral(":/pictures/toolbar/%1-%2.png").arg(m_name).arg(drawnSizeFor(size)));
        QPixmap pixmap = QPixmap::fromImage(
            inTones(drawing, text, accent).scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        pixmap.setDevicePixelRatio(scale);
        return pixmap;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new TwoToneEngine(*this); }

private:
    QString m_name;
};

} // namespace

QIcon toolbarIcon(const QString& name)
{
    loadPictures();
    return QIcon(new TwoToneEngine(name));
}

} // namespace app
