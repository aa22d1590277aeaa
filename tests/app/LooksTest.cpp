#include "app/mainwindow/ToolbarIcon.h"
#include "tests/support/RunnableTest.h"
#include "widgets/OutlinedStyle.h"

#include <QApplication>
#include <QPainter>
#include <QRadioButton>
#include <QStyleFactory>
#include <QTest>

#include <algorithm>
#include <memory>
#include <utility>

// What the program paints itself, by its pixels: in whatever palette, it must be seen.
class LooksTest final : public QObject
{
    Q_OBJECT

    static QPalette paletteOf(QColor window, QColor text, QColor highlight)
    {
        QPalette palette;
        for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) {
            palette.setColor(role, window);
        }
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            palette.setColor(role, text);
        }
        palette.setColor(QPalette::Highlight, highlight);
        palette.setColor(QPalette::Disabled, QPalette::ButtonText, Qt::gray);
        return palette;
    }

    static bool holds(const QImage& picture, QColor color)
    {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == color) {
                    return true;
                }
            }
        }
        return false;
    }

    // The lightest pixel of an empty radio button without a caption.
    static int lightestOfAButton(QStyle& style, const QPalette& palette)
    {
        QRadioButton button;
        button.setStyle(&style);
        button.setPalette(palette);
        button.resize(30, 30);
        QImage picture(button.size(), QImage::Format_ARGB32);
        picture.fill(palette.color(QPalette::Window));
        button.render(&picture);
        int lightest = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                lightest = std::max(lightest, qGray(picture.pixel(x, y)));
            }
        }
        return lightest;
    }

private slots:
    void toolbarPicturesFollowThePalette()
    {
        const QPalette before = QApplication::palette();
        for (const auto& [text, highlight] : {std::pair(Qt::black, Qt::blue), std::pair(Qt::white, Qt::cyan)}) {
            QApplication::setPalette(paletteOf(Qt::darkGray, text, highlight));
            for (const char* name : {"retrieve", "update", "load", "save", "default", "summary", "exit", "abort"}) {
                for (const int size : {24, 48}) {
                    const QIcon icon = app::toolbarIcon(QLatin1String(name));
                    const QImage shown = icon.pixmap(size, size).toImage();
                    QVERIFY2(holds(shown, text) && holds(shown, highlight), name);
                    const QImage disabled = icon.pixmap(QSize(size, size), QIcon::Disabled).toImage();
                    QVERIFY2(holds(disabled, Qt::gray) && !holds(disabled, highlight), name);
                }
            }
        }
        QApplication::setPalette(before);
    }

    void anOptionIsSeenOnABlackWindow()
    {
        const QPalette contrast = paletteOf(Qt::black, Qt::white, Qt::cyan);
        const std::unique_ptr<QStyle> plain(QStyleFactory::create(QStringLiteral("fusion")));
        widgets::OutlinedStyle outlined;
        outlined.setBaseStyle(QStyleFactory::create(QStringLiteral("fusion")));
        QVERIFY(lightestOfAButton(*plain, contrast) < 128); // or the outline would not be needed
        QVERIFY(lightestOfAButton(outlined, contrast) > 200);
    }
};

static const testsupport::RunnableTest<LooksTest> kRunnable;
#include "LooksTest.moc"
