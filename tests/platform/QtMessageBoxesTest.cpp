// Message boxes as they are seen: their lines, their titles, their buttons.

#include "platform/qt/QtMessageBoxes.h"
#include "tests/support/RunnableTest.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QProxyStyle>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTextDocument>
#include <QTimer>

#include <functional>

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::MessageBox;
using platform::QtMessageBoxes;

namespace {

// As some desktops have it: the buttons of a box are to have pictures, and there is one for each.
class PictureStyle final : public QProxyStyle
{
public:
    PictureStyle()
        : QProxyStyle(QStringLiteral("Fusion"))
    {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override
    {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 1
                                                           : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
    QIcon standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const override
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        const QIcon icon = QProxyStyle::standardIcon(picture, option, widget);
        return icon.isNull() ? QIcon(pixmap) : icon;
    }
};

} // namespace

class QtMessageBoxesTest final : public QObject
{
    Q_OBJECT

    // Shows a box and looks at it while it is open.
    static BoxAnswer show(const MessageBox& box, const std::function<void(QMessageBox&)>& look)
    {
        QtMessageBoxes boxes(QStringLiteral("The Program"));
        bool looked = false;
        QTimer::singleShot(0, QApplication::instance(), [&] {
            auto* const window = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(window != nullptr);
            QCoreApplication::processEvents();
            looked = true;
            look(*window);
            window->close();
        });
        const BoxAnswer answer = boxes.show(box);
        [&looked] { QVERIFY(looked); }();
        return answer;
    }
    static const QLabel& labelOf(const QMessageBox& window)
    {
        return *window.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    }

private slots:
    void givenLinesAreNotBroken_data()
    {
        QTest::addColumn<int>("columns");
        QTest::newRow("a word") << 5;
        QTest::newRow("a note") << 72;
        QTest::newRow("a long note") << 90;
    }
    void givenLinesAreNotBroken()
    {
        QFETCH(int, columns);
        // As wide as text of that many characters is.
        std::string line;
        while (static_cast<int>(line.size()) < columns) {
            line += "word ";
        }
        show({.text = line + "\r\n     indented\r\n" + line, .icon = BoxIcon::Information}, [&](QMessageBox& window) {
            const QLabel& label = labelOf(window);
            QVERIFY(label.width() >= label.fontMetrics().horizontalAdvance(QString::fromStdString(line).trimmed()));
            QVERIFY(label.height() >= 3 * label.fontMetrics().height());
            QVERIFY(!label.wordWrap());
            QVERIFY(window.rect().contains(label.geometry()));
        });
    }

    void aLineThatIsWiderThanTheScreenIsBroken()
    {
        std::string line;
        for (int word = 0; word < 100; ++word) {
            line += "word ";
        }
        show({.text = line}, [&](QMessageBox& window) {
            const QLabel& label = labelOf(window);
            QVERIFY(label.wordWrap());
            QVERIFY(window.width() <= window.screen()->availableGeometry().width());
            QVERIFY(label.height() >= label.heightForWidth(label.width())); // no line is cut off
            QVERIFY(window.rect().contains(label.geometry()));
        });
    }

    void titlesAreNotCut()
    {
        const std::string title = "Notes on the Keyboard Language table";
        show({.text = "no", .title = title}, [&](QMessageBox& window) {
            QCOMPARE(window.windowTitle(), QString::fromStdString(title));
            QFont bold = window.font(); // as title bars may have it
            bold.setBold(true);
            const int buttons =
                4 * QFontMetrics(bold).height(); // the window manager's: icon, minimise, maximise, close
            QVERIFY(window.width() >= QFontMetrics(bold).horizontalAdvance(window.windowTitle()) + buttons);
        });
    }

    void noButtonHasAPicture()
    {
        QApplication::setStyle(new PictureStyle);
        QPushButton example;
        QVERIFY(!example.style()->standardIcon(QStyle::SP_DialogYesButton).isNull()); // or nothing is tested here
        const auto answer = show({.text = "Save?", .buttons = BoxButtons::YesNoCancel}, [](QMessageBox& window) {
            QCOMPARE(window.buttons().size(), 3);
            for (const QAbstractButton* button : window.buttons()) {
                QVERIFY2(button->icon().isNull(), qPrintable(button->text()));
            }
        });
        QApplication::setStyle(QStringLiteral("Fusion"));
        QCOMPARE(answer, BoxAnswer::Cancel);
    }
};

static const testsupport::RunnableTest<QtMessageBoxesTest> kRunnable;
#include "QtMessageBoxesTest.moc"
