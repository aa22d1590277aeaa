#include "tests/support/Contrast.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/Palettes.h"
#include "tests/support/RunnableTest.h"

#include <QApplication>

using namespace testsupport;

namespace {

constexpr int kIdentificationCommands = 5;
constexpr int kTicksOfACommand = 3;

constexpr QRgb kLightRed = 0xFFFF0000;
constexpr QRgb kDarkRed = 0xFF800000;
constexpr QRgb kLightGreen = 0xFF00FF00;
constexpr QRgb kDarkGreen = 0xFF008000;

// The colour of a lamp as painted, when it is one colour from the middle to its rim; nothing otherwise.
std::optional<QRgb> fillOf(QWidget& lamp)
{
    const QImage picture = lamp.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QPointF middle = QRectF(picture.rect()).center();
    const qreal radius = picture.width() / 2.0 - 4 * picture.devicePixelRatio();
    const QRgb fill = picture.pixel(middle.toPoint());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const bool isInside = QLineF(middle, QPointF(x + 0.5, y + 0.5)).length() < radius;
            if (isInside && picture.pixel(x, y) != fill) {
                return std::nullopt;
            }
        }
    }
    return fill;
}

QString nameOf(std::optional<QRgb> color)
{
    return color ? QColor(*color).name() : QStringLiteral("not one colour");
}

// The real window with the ticks in the hands of the test.
struct Desk
{
    Desk()
    {
        f.tickMilliseconds = 0;
        f.start();
    }
    [[nodiscard]] QWidget& send() const { return *f.find<QWidget>("shpSend"); }
    [[nodiscard]] QWidget& recv() const { return *f.find<QWidget>("shpRecv"); }
    // Both lamps as they are on screen: S and R for lit ones, s and r for dark ones.
    [[nodiscard]] QString lamps() const
    {
        const auto letter = [](QWidget& lamp, QRgb lit, QRgb dark, const char* letters) {
            const std::optional<QRgb> fill = fillOf(lamp);
            return QLatin1Char(fill == lit ? letters[0] : fill == dark ? letters[1] : '?');
        };
        return QString(letter(send(), kLightRed, kDarkRed, "Ss")) + letter(recv(), kLightGreen, kDarkGreen, "Rr");
    }
    // Runs a step from the event loop when the reader's reply to the command that is being sent has come, which takes
    // fewer rounds of the loop.
    void afterTheReply(std::function<void()> step, int rounds = 10)
    {
        QTimer::singleShot(0, f.window.get(), [this, step = std::move(step), rounds] {
            if (rounds > 0) {
                afterTheReply(step, rounds - 1);
            } else {
                step();
            }
        });
    }
    MainWindowFixture f;
};

} // namespace

// The two lamps of the link on the real window: their colours, and what each tells.
class LampsTest final : public QObject
{
    Q_OBJECT

private slots:
    void eachLampIsFilledWithOneOfItsTwoColours()
    {
        const Desk d;
        auto& send = static_cast<widgets::Lamp&>(d.send());
        auto& recv = static_cast<widgets::Lamp&>(d.recv());
        QCOMPARE(nameOf(fillOf(send)), "#800000");
        QCOMPARE(nameOf(fillOf(recv)), "#008000");
        send.setLit(true);
        recv.setLit(true);
        QCOMPARE(nameOf(fillOf(send)), "#ff0000");
        QCOMPARE(nameOf(fillOf(recv)), "#00ff00");
        // At most a thin rim is of another colour.
        const QImage picture = send.grab().toImage();
        int filled = 0;
        for (int x = 0; x < picture.width(); ++x) {
            filled += picture.pixel(x, picture.height() / 2) == kLightRed ? 1 : 0;
        }
        QVERIFY2(filled >= picture.width() - 6, qPrintable(QString::number(filled)));
        QVERIFY(picture.width() >= 10);
    }

    void aLampIsSeenOnEveryWindow_data()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::addColumn<bool>("lit");
        for (const NamedPalette& palette : kPalettes) {
            QTest::addRow("%s, dark", palette.name) << palette.make() << false;
            QTest::addRow("%s, lit", palette.name) << palette.make() << true;
        }
    }
    void aLampIsSeenOnEveryWindow()
    {
        QFETCH(QPalette, palette);
        QFETCH(bool, lit);
        const QPalette before = QApplication::palette();
        QApplication::setPalette(palette);
        const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
        const Desk d;
        for (QWidget* lamp : {&d.send(), &d.recv()}) {
            static_cast<widgets::Lamp*>(lamp)->setLit(lit);
            const Painted window(*d.f.window);
            const double seen = window.contrastOfCircle(window.pixelsOf(*lamp));
            QVERIFY2(seen >= kSeenShape, qPrintable(lamp->objectName() + QStringLiteral(": %1").arg(seen)));
        }
    }

    // Red: a command goes out, for two ticks from the next one on. Green: a line has come, until the next tick.
    void eachLampTellsItsDirection()
    {
        Desk d;
        QStringList seen;
        d.f.reader.onOutput = [&](int count) {
            if (count == kIdentificationCommands + 1) {
                seen << "sent: " + d.lamps();
            }
            d.afterTheReply([&d, &seen, count] {
                const auto note = [&](const char* when) {
                    if (count == kIdentificationCommands + 1) {
                        seen << when + d.lamps();
                    }
                };
                note("answered: ");
                for (int tick = 0; tick < kTicksOfACommand; ++tick) {
                    d.f.window->Timer1_Timer();
                    note("tick: ");
                }
            });
        };
        d.f.press("KEY_RETRIEVE");
        QCOMPARE(seen, QStringList({"sent: sr", "answered: sR", "tick: Sr", "tick: Sr", "tick: sr"}));
        QCOMPARE(d.f.reader.commands.size(), 32); // the run went to its end
        QCOMPARE(d.lamps(), "sr");
    }

    // Finding the port: the device object is opened, then asked.
    void bothLampsShowThatTheDriverIsAsked()
    {
        Desk d;
        QStringList seen;
        d.f.driver.onCall = [&](const char* call) { seen << QLatin1String(call) + ": " + d.lamps(); };
        d.f.reader.opens = false; // no further than the driver
        d.f.boxes.expect(platform::BoxAnswer::Ok);
        d.f.press("KEY_RETRIEVE");
        QCOMPARE(seen, QStringList({"open: Sr", "write: SR", "read: SR", "close: SR"}));
        QCOMPARE(d.lamps(), "sr");
    }
};

static const testsupport::RunnableTest<LampsTest> kRunnable;
#include "LampsTest.moc"
