#include "app/looks/ProductPicture.h"
#include "app/startup/ProgramText.h"
#include "app/startup/ProgramVersion.h"
#include "app/startup/frmSplash.h"
#include "platform/qt/AnsiText.h"
#include "tests/support/RunnableTest.h"
#include "tests/support/SlowScreen.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <memory>

using app::frmSplash;
using testsupport::SlowScreen;

namespace {

// The splash of a program with a window that has one button.
struct Shown
{
    Shown()
    {
        main->show();
        splash->showInMiddle();
    }

    std::unique_ptr<QWidget> main = std::make_unique<QWidget>();
    QPushButton& button = *new QPushButton(main.get());
    QPointer<frmSplash> splash = new frmSplash(main.get());
};

} // namespace

class SplashTest final : public QObject
{
    Q_OBJECT

private slots:
    // kb-for-windows
    void itNamesProgramMakerVersionAndPart()
    {
        const Shown shown;
        const frmSplash& splash = *shown.splash;
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
        const Shown shown;
        QVERIFY(!shown.splash->isModal());
        QVERIFY(shown.splash->testAttribute(Qt::WA_ShowWithoutActivating));
        QVERIFY(shown.splash->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
        QVERIFY(!shown.splash->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    }

    // The start goes on at once, whether or not the screen shows it.
    void nothingWaitsForIt()
    {
        const SlowScreen screen(SlowScreen::ShowsNever);
        QElapsedTimer timer;
        timer.start();
        const Shown shown;
        QVERIFY2(timer.elapsed() < 400, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(screen.painted(), QStringList());
        QVERIFY(shown.splash->isVisible());
    }

    void aClickAnywhereClosesItAndDoesWhatItDoesBesides_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char* name : {"frmSplash", "Frame1", "imgLogo", "lblCompanyProduct", "lblPartNum", "lblPlatform",
                                 "lblProductName", "lblVersion", "lblWarning", "lblCopyright", "aButtonOfTheProgram"}) {
            QTest::newRow(name) << QByteArray(name);
        }
    }
    void aClickAnywhereClosesItAndDoesWhatItDoesBesides()
    {
        QFETCH(QByteArray, name);
        Shown shown;
        int clicks = 0;
        connect(&shown.button, &QPushButton::clicked, this, [&clicks] { ++clicks; });
        const bool isButton = name == "aButtonOfTheProgram";
        QWidget* clicked = isButton              ? &shown.button
                           : name == "frmSplash" ? shown.splash.data()
                                                 : shown.splash->findChild<QWidget*>(QLatin1String(name));
        QTest::mouseClick(clicked, Qt::LeftButton);
        QVERIFY(!shown.splash || !shown.splash->isVisible());
        QCOMPARE(clicks, isButton ? 1 : 0);
        QTRY_VERIFY(shown.splash.isNull());
    }

    void aKeyAnywhereClosesItAndDoesWhatItDoesBesides_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("a letter") << int{Qt::Key_A};
        QTest::newRow("Enter") << int{Qt::Key_Return};
        QTest::newRow("Escape") << int{Qt::Key_Escape};
        QTest::newRow("blank") << int{Qt::Key_Space};
    }
    void aKeyAnywhereClosesItAndDoesWhatItDoesBesides()
    {
        QFETCH(int, key);
        for (const bool onSplash : {true, false}) {
            Shown shown;
            int presses = 0;
            connect(&shown.button, &QPushButton::clicked, this, [&presses] { ++presses; });
            QTest::keyClick(onSplash ? static_cast<QWidget*>(shown.splash) : &shown.button, Qt::Key(key));
            QVERIFY(!shown.splash || !shown.splash->isVisible());
            QCOMPARE(presses, !onSplash && key == Qt::Key_Space ? 1 : 0);
        }
    }

    void everyOtherWindowClosesIt()
    {
        const Shown shown;
        QDialog box(shown.main.get());
        box.show();
        QVERIFY(!shown.splash || !shown.splash->isVisible());
    }

    void theMainWindowAndToolTipsLeaveIt()
    {
        const Shown shown;
        shown.main->hide();
        shown.main->show();
        QWidget tip(shown.main.get(), Qt::ToolTip);
        tip.show();
        QVERIFY(shown.splash && shown.splash->isVisible());
    }

    void itGoesByItselfAWhileAfterTheMainWindowCame()
    {
        QCOMPARE(frmSplash::kLongestStand.count(), 1500);
        const Shown shown;
        QElapsedTimer timer;
        timer.start();
        shown.splash->standAboveMainWindow();
        const int limit = 10 * static_cast<int>(frmSplash::kLongestStand.count());
        QTRY_VERIFY_WITH_TIMEOUT(shown.splash.isNull(), limit);
        QVERIFY2(timer.elapsed() >= frmSplash::kLongestStand.count() * 9 / 10, // a timer may be 5 % early
                 qPrintable(QString::number(timer.elapsed())));
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
