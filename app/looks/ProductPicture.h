#pragma once

#include <QIcon>
#include <QLabel>

// The picture of the product: a swipe reader with a card in its slot. Also the program's icon.
namespace app {

// Makes the program's pictures known by their names below ":/pictures/". Does no harm a second time.
void loadPictures();

// In the sizes that windows and taskbars show, 16 to 64 pixels.
[[nodiscard]] QIcon productPicture();

// Shows the picture in a label, as sharp as its screen allows. The size is in logical pixels.
void showProductPicture(QLabel& label, int size);

} // namespace app
