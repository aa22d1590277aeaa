#include "app/ProductPicture.h"

#include <QSize>

// Outside any namespace, as the macro asks: pictures in a static library are there only when somebody names them.
static void initPictures()
{
    Q_INIT_RESOURCE(pictures);
}

namespace app {

void loadPictures()
{
    initPictures();
}

QIcon productPicture()
{
    loadPictures();
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addFile(QStringLiteral(":/pictures/reader-%1.png").arg(size), QSize(size, size));
    }
    return icon;
}

void showProductPicture(QLabel& label, int size)
{
    label.setPixmap(productPicture().pixmap(QSize(size, size), label.devicePixelRatioF()));
    label.setFixedSize(size, size);
}

} // namespace app
