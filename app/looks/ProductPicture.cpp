#include "app/looks/ProductPicture.h"

#include <QPixmap>
#include <QSize>

#include <algorithm>
#include <array>

// Outside any namespace, as the macro asks: pictures in a static library are there only when somebody names them.
static void initPictures()
{
    Q_INIT_RESOURCE(pictures);
}

namespace app {

namespace {

constexpr std::array<int, 8> kDrawnSizes = {16, 24, 32, 48, 64, 128, 160, 256};

QString fileOfSize(int size)
{
    return QStringLiteral(":/pictures/reader-%1.png").arg(size);
}

} // namespace

void loadPictures()
{
    initPictures();
}

QIcon productPicture()
{
    loadPictures();
    QIcon icon;
    // Each is decoded at once, which costs the start; what a taskbar shows is no larger than these.
    for (const int size : {16, 24, 32, 48, 64}) {
        icon.addFile(fileOfSize(size), QSize(size, size));
    }
    return icon;
}

void showProductPicture(QLabel& label, int size)
{
    loadPictures();
    const qreal ratio = label.devicePixelRatioF();
    const int pixels = qRound(size * ratio);
    const auto* const drawn = std::lower_bound(kDrawnSizes.begin(), kDrawnSizes.end() - 1, pixels);
    QPixmap picture(fileOfSize(*drawn));
    if (*drawn != pixels) {
        picture = picture.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    picture.setDevicePixelRatio(ratio);
    label.setPixmap(picture);
    label.setFixedSize(size, size);
}

} // namespace app
