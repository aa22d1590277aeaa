#include "app/ProductPicture.h"
#include "app/ProgramText.h"
#include "app/ProgramVersion.h"
#include "app/frmSplash.h"
#include "platform/qt/AnsiText.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SlowScreen.h"

#include <QLabel>
#include <QTest>

using app::frmSplash;
using testsupport::SlowScreen;

class SplashTest final : public QObject
{
    Q_OBJECT

private slots:
    // kb-for-windows
    void itNamesProgramMakerVersionAndPart()
    {
        frmSplash splash;
        splash.showInMiddle();
        QVERIFY(splash.isVisible());
        const auto textOf = [&splash](const char* name) {
            return splash.findChild<QLabel*>(QLatin1String(name))->text();
        };
        QCOMPARE(textOf("lblProductName"), "Teslin Configure");
        QCOMPARE(textOf("lblCompanyProduct"), platform::toQString(app::kCompanyName));
        QCOMPARE(textOf("lblPlatform"), "for Windows");
        QCOMPARE(textOf("lblVersion"), "Version 01.04.0001");
        QCOMPARE(textOf("lblPartNum"), "P/N: 51208864");
        QCOMPARE(textOf("lblWarning"), "All Rights Reserved");
        QCOMPARE(textOf("lblCopyright"), platform::toQString(app::kLegalNotice));
        const auto* frame = splash.findChild<QWidget*>("Frame1");
        for (const char* name : {"lblProductName", "lblCompanyProduct", "lblPlatform", "lblVersion", "lblPartNum",
                                 "lblWarning", "lblCopyright"}) {
            const auto* label = frame->findChild<QLabel*>(QLatin1String(name));
            QCOMPARE(label->font().family(), "Arial");
            QCOMPARE(label->textFormat(), Qt::PlainText);
            QVERIFY(label->isVisible());
        }
        QVERIFY(!frame->findChild<QLabel*>("imgLogo")->pixmap().isNull());
    }

    void itNeitherBlocksNorTakesTheFocus()
    {
        frmSplash splash;
        QVERIFY(!splash.isModal());
        QVERIFY(splash.testAttribute(Qt::WA_ShowWithoutActivating));
        QVERIFY(!splash.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    }

    void itIsPaintedBeforeTheStartGoesOn()
    {
        const SlowScreen screen(SlowScreen::ShowsLater);
        frmSplash splash;
        splash.showInMiddle();
        QVERIFY(screen.painted().contains("lblProductName"));
        QVERIFY(splash.isVisible());
    }

    // As on a desktop that the user is not looking at.
    void theStartGoesOnWhenItCannotBePainted()
    {
        const SlowScreen screen(SlowScreen::ShowsNever);
        frmSplash splash;
        splash.showInMiddle();
        QCOMPARE(screen.painted(), QStringList());
        QVERIFY(splash.isVisible());
    }

    void anyClickClosesIt_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char* name : {"frmSplash", "Frame1", "imgLogo", "lblCompanyProduct", "lblPartNum", "lblPlatform",
                                 "lblProductName", "lblVersion", "lblWarning", "lblCopyright"}) {
            QTest::newRow(name) << QByteArray(name);
        }
    }
    void anyClickClosesIt()
    {
        QFETCH(QByteArray, name);
        frmSplash splash;
        splash.showInMiddle();
        QWidget* clicked = name == "frmSplash" ? &splash : splash.findChild<QWidget*>(QLatin1String(name));
        QTest::mouseClick(clicked, Qt::LeftButton);
        QVERIFY(!splash.isVisible());
    }

    void anyKeyClosesIt_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("a letter") << int{Qt::Key_A};
        QTest::newRow("Enter") << int{Qt::Key_Return};
        QTest::newRow("Escape") << int{Qt::Key_Escape};
        QTest::newRow("blank") << int{Qt::Key_Space};
    }
    void anyKeyClosesIt()
    {
        QFETCH(int, key);
        frmSplash splash;
        splash.showInMiddle();
        QTest::keyClick(&splash, Qt::Key(key));
        QVERIFY(!splash.isVisible());
    }

    void thePictureComesInTheUsualSizes()
    {
        QList<int> widths;
        for (const QSize& size : app::productPicture().availableSizes()) {
            QCOMPARE(size.width(), size.height());
            widths << size.width();
        }
        QCOMPARE(widths, QList<int>({16, 24, 32, 48, 64}));
        for (const int size : widths) {
            const QImage picture = app::productPicture().pixmap(size, size).toImage();
            QCOMPARE(picture.width(), size);
            QCOMPARE(qAlpha(picture.pixel(0, 0)), 0); // no background
            QCOMPARE(qAlpha(picture.pixel(size / 2, size / 2)), 255);
        }
    }

    void thePictureIsDrawnForEverySize()
    {
        for (const int size : {16, 24, 32, 48, 64, 128, 160, 256}) {
            app::loadPictures();
            const QImage picture(QStringLiteral(":/pictures/reader-%1.png").arg(size));
            QCOMPARE(picture.size(), QSize(size, size));
        }
        for (const int size : {32, 100, 160, 300}) {
            QLabel label;
            app::showProductPicture(label, size);
            QCOMPARE(label.pixmap().deviceIndependentSize().toSize(), QSize(size, size));
        }
    }
};

static const testsupport::RunnableTest<SplashTest> kRunnable;
#include "SplashTest.moc"
