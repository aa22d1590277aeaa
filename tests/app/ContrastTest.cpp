#include "tests/support/Contrast.h"
#include "app/dialogs/frmAbout.h"
#include "tests/support/MainWindowFixture.h"
#include "tests/support/Palettes.h"
#include "tests/support/RunnableTest.h"
#include "widgets/OutlinedStyle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTabBar>

using namespace testsupport;

namespace {

// The program as a desktop with the given colours shows it.
class Desktop final
{
public:
    explicit Desktop(const QPalette& palette)
        : m_before(QApplication::palette())
    {
        auto* style = new widgets::OutlinedStyle;
        style->setBaseStyle(QStyleFactory::create(QStringLiteral("fusion")));
        QApplication::setStyle(style);
        show(palette);
        f.start();
        f.window->resize(1100, 800);
        f.window->activateWindow();
        m_isActive = QTest::qWaitForWindowActive(f.window.get());
    }
    ~Desktop()
    {
        f.window.reset();
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("fusion")));
        QApplication::setPalette(m_before);
    }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    // The desktop hands its colours over through the style.
    static void show(QPalette palette)
    {
        QApplication::style()->polish(palette);
        QApplication::setPalette(palette);
    }

    [[nodiscard]] bool isActive() const { return m_isActive; }

    // Calls for every kind of row, with its editor open.
    void onEveryEditor(const std::function<void()>& look)
    {
        for (const auto& [tab, name] :
             {std::pair(app::kConfigurationTab, "grdCFG"), std::pair(app::kKeyboardLanguageTab, "grdKB")}) {
            f.find<QTabWidget>("SSTab1")->setCurrentIndex(tab);
            auto* grid = f.find<tables::ParamGrid>(name);
            // One of each kind; the Keyboard Language rows from the third on are pairs.
            const std::vector<int> rows = tab == app::kConfigurationTab
                                              ? std::vector<int>{1, 2, 3, 4, 9, 11, 17, 19, 22, 25, 26}
                                              : std::vector<int>{1, 2, 9};
            for (const int row : rows) {
                grid->setRow(row);
                look();
            }
        }
    }

    MainWindowFixture f;

private:
    QPalette m_before;
    bool m_isActive = false;
};

void addPalettes()
{
    QTest::addColumn<QPalette>("palette");
    for (const NamedPalette& palette : kPalettes) {
        QTest::newRow(palette.name) << palette.make();
    }
}

bool isLooked(const QWidget& widget)
{
    return widget.isVisible() && widget.isEnabled() && !widget.visibleRegion().isEmpty() &&
           widget.visibleRegion().boundingRect() == widget.rect();
}

QString nameOf(const QWidget& widget)
{
    const QString name = widget.objectName().isEmpty() ? widget.metaObject()->className() : widget.objectName();
    return widget.parentWidget() != nullptr && widget.objectName().isEmpty()
               ? nameOf(*widget.parentWidget()) + QLatin1Char('/') + name
               : name;
}

// What is not seen well enough: one line each.
class Complaints final
{
public:
    void expect(const QString& what, double contrast, double wanted)
    {
        ++m_looks;
        if (contrast < wanted) {
            m_complaints << QStringLiteral("%1: %2").arg(what).arg(contrast, 0, 'f', 2);
        }
    }
    [[nodiscard]] int looks() const { return m_looks; }
    [[nodiscard]] QString text()
    {
        m_complaints.removeDuplicates();
        return m_complaints.join(QLatin1Char('\n'));
    }

private:
    QStringList m_complaints;
    int m_looks = 0;
};

QRect indicatorOf(const QAbstractButton& button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    const bool isRadio = qobject_cast<const QRadioButton*>(&button) != nullptr;
    return button.style()->subElementRect(isRadio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator,
                                          &option, &button);
}

QRect captionOf(const QAbstractButton& button)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    option.text = button.text();
    const bool isRadio = qobject_cast<const QRadioButton*>(&button) != nullptr;
    const bool isCheck = qobject_cast<const QCheckBox*>(&button) != nullptr;
    return isRadio || isCheck
               ? button.style()->subElementRect(isRadio ? QStyle::SE_RadioButtonContents : QStyle::SE_CheckBoxContents,
                                                &option, &button)
               : button.rect().adjusted(4, 4, -4, -4);
}

// Each option's ring or box, all around, and its mark, which stands on the filling; without it there is only the
// filling.
void lookAtOptions(const QWidget& window, const Painted& painted, Complaints& complaints)
{
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        const bool isRadio = qobject_cast<const QRadioButton*>(button) != nullptr;
        const bool isCheck = qobject_cast<const QCheckBox*>(button) != nullptr;
        if (!isLooked(*button) || (!isRadio && !isCheck)) {
            continue;
        }
        const QRect pixels = painted.pixelsOf(*button, indicatorOf(*button));
        complaints.expect(nameOf(*button) + (button->isChecked() ? ", on" : ", off"),
                          isRadio ? painted.contrastOfCircle(pixels) : painted.contrastOfOutline(pixels), kSeenShape);
        const int rim = pixels.width() / 4;
        const double mark = painted.contrastWithin(pixels.adjusted(rim, rim, -rim, -rim));
        if (button->isChecked()) {
            complaints.expect(nameOf(*button) + "'s mark", mark, kSeenShape);
        } else {
            complaints.expect(nameOf(*button) + " looks marked", kSeenShape - mark, 0);
        }
    }
}

void lookAtOutlines(const QWidget& window, const Painted& painted, Complaints& complaints)
{
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() != &window || !isLooked(*widget)) {
            continue;
        }
        QRect box = widget->rect();
        const auto* frame = qobject_cast<const QFrame*>(widget);
        const auto* bar = qobject_cast<const QScrollBar*>(widget);
        if (const auto* group = qobject_cast<const QGroupBox*>(widget)) {
            box.setTop(group->title().isEmpty() ? 0 : group->fontMetrics().height() + 3);
        } else if (bar != nullptr && bar->maximum() > bar->minimum()) {
            QStyleOptionSlider option;
            option.initFrom(bar);
            option.orientation = bar->orientation();
            option.minimum = bar->minimum();
            option.maximum = bar->maximum();
            option.sliderPosition = bar->value();
            option.sliderValue = bar->value();
            option.pageStep = bar->pageStep();
            option.singleStep = bar->singleStep();
            box = bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, bar);
            for (const auto arrow : {QStyle::SC_ScrollBarAddLine, QStyle::SC_ScrollBarSubLine}) {
                const QRect rect = bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, arrow, bar);
                complaints.expect(nameOf(*bar) + " arrow",
                                  painted.contrastWithin(painted.pixelsOf(*bar, rect.adjusted(3, 3, -3, -3))),
                                  kSeenShape);
            }
            // Across its way: along it, the bar may stand at its end.
            const QRect pixels = painted.pixelsOf(*bar, box);
            const QPointF middle = QRectF(pixels).center();
            const QPointF way = bar->orientation() == Qt::Horizontal ? QPointF(pixels.width() / 2.0 + 3, 0)
                                                                     : QPointF(0, pixels.height() / 2.0 + 3);
            complaints.expect(
                nameOf(*bar) + " slider",
                std::max(painted.contrastAlong(middle - way, middle), painted.contrastAlong(middle + way, middle)),
                kSeenShape);
            continue;
        } else if (qobject_cast<const QLineEdit*>(widget) == nullptr &&
                   qobject_cast<const QPushButton*>(widget) == nullptr &&
                   qobject_cast<const QProgressBar*>(widget) == nullptr &&
                   (frame == nullptr || frame->frameShape() == QFrame::NoFrame ||
                    frame->frameShape() == QFrame::HLine)) { // a rule is a line of its own
            continue;
        }
        complaints.expect(nameOf(*widget), painted.contrastOfOutline(painted.pixelsOf(*widget, box)), kSeenShape);
    }
}

void lookAtTexts(const QWidget& window, const Painted& painted, Complaints& complaints)
{
    const auto look = [&](const QWidget& widget, QRect rect, const QString& text) {
        if (!text.trimmed().isEmpty()) {
            complaints.expect(nameOf(widget) + " \"" + text.left(20) + "\"",
                              painted.contrastWithin(painted.pixelsOf(widget, rect)), kSeenText);
        }
    };
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() != &window || !isLooked(*widget)) {
            continue;
        }
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            look(*label, label->contentsRect(), label->text());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            look(*button, captionOf(*button), button->text());
        } else if (const auto* box = qobject_cast<const QLineEdit*>(widget)) {
            look(*box, box->rect().adjusted(3, 3, -3, -3), box->text());
        } else if (const auto* group = qobject_cast<const QGroupBox*>(widget)) {
            look(*group, QRect(0, 0, group->width(), group->fontMetrics().height()), group->title());
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
            for (int tab = 0; tab < tabs->count(); ++tab) {
                look(*tabs, tabs->tabRect(tab).adjusted(4, 4, -4, -4), tabs->tabText(tab));
            }
        } else if (const auto* menu = qobject_cast<const QMenuBar*>(widget)) {
            for (QAction* action : menu->actions()) {
                look(*menu, menu->actionGeometry(action), action->text());
            }
        } else if (const auto* grid = qobject_cast<const tables::ParamGrid*>(widget)) {
            for (int row = 0; row < grid->model()->rowCount(); ++row) {
                for (int column = 0; column < grid->model()->columnCount(); ++column) {
                    const QModelIndex index = grid->model()->index(row, column);
                    const QRect rect = grid->visualRect(index);
                    if (grid->viewport()->rect().contains(rect)) {
                        look(*grid->viewport(), rect, index.data().toString());
                    }
                }
            }
        }
    }
}

} // namespace

// Everything that the program shows, on light, dark and high contrast desktops: its shapes stand out 3 to 1 from what
// they stand on, its texts 4.5 to 1, told by the pixels.
class ContrastTest final : public QObject
{
    Q_OBJECT

    struct frmAboutParts
    {
        const Painted& painted;
        const QLabel* picture;
        const QFrame* rule;
    };

    // Opens the about box, looks at it and closes it.
    static void withAboutBox(const Desktop& d, const std::function<void(const frmAboutParts&)>& look)
    {
        bool wasShown = false;
        QTimer::singleShot(0, &*d.f.window, [&] { // opening it returns when it is closed
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (window->objectName() == QLatin1String("frmAbout") && window->isVisible()) {
                    wasShown = true;
                    const Painted painted(*window);
                    const QFrame* rule = nullptr;
                    for (const QFrame* frame : window->findChildren<QFrame*>()) {
                        rule = frame->frameShape() == QFrame::HLine ? frame : rule;
                    }
                    look({painted, window->findChild<QLabel*>("picIcon"), rule});
                    window->close();
                }
            }
        });
        d.f.find<QAction>("mnuAbout")->trigger();
        QVERIFY(wasShown);
    }

private slots:
    void everythingIsSeenInTheMainWindow_data() { addPalettes(); }
    void everythingIsSeenInTheMainWindow()
    {
        QFETCH(QPalette, palette);
        Desktop d(palette);
        QVERIFY(d.isActive());
        d.f.window->paramTables().PutTableEntry_CFG("015", "XXX", 0); // a row with a ground of its own
        d.f.find<QLabel>("StatusBar1_1")->setText("Sent command: /rawxact WPV001");
        d.f.find<QProgressBar>("pgbTransfer")->show();
        Complaints options;
        Complaints outlines;
        Complaints texts;
        d.onEveryEditor([&] {
            const Painted painted(*d.f.window);
            lookAtOptions(*d.f.window, painted, options);
            lookAtOutlines(*d.f.window, painted, outlines);
            lookAtTexts(*d.f.window, painted, texts);
        });
        QCOMPARE(options.text(), QString());
        QCOMPARE(outlines.text(), QString());
        QCOMPARE(texts.text(), QString());
        QVERIFY(options.looks() > 40);
        QVERIFY(outlines.looks() > 100);
        QVERIFY(texts.looks() > 800);
    }

    void everythingIsSeenInTheSmallWindows_data()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<QByteArray>("form");
        for (const NamedPalette& palette : kPalettes) {
            QTest::addRow("options, %s", palette.name)
                << palette.make() << QByteArray("mnuOptions") << QByteArray("frmOptions");
            QTest::addRow("single field, %s", palette.name)
                << palette.make() << QByteArray("mnuEditSingle") << QByteArray("dlgSingleField");
            QTest::addRow("about, %s", palette.name)
                << palette.make() << QByteArray("mnuAbout") << QByteArray("frmAbout");
            QTest::addRow("summary, %s", palette.name)
                << palette.make() << QByteArray("KEY_SUMMARY") << QByteArray("frmSummary");
        }
    }
    void everythingIsSeenInTheSmallWindows()
    {
        QFETCH(QPalette, palette);
        QFETCH(QByteArray, entry);
        QFETCH(QByteArray, form);
        Desktop d(palette);
        QVERIFY(d.isActive());
        Complaints complaints;
        bool wasShown = false;
        const auto look = [&] {
            QWidget* window = nullptr;
            for (QWidget* widget : QApplication::topLevelWidgets()) {
                window = widget->objectName() == QLatin1String(form) && widget->isVisible() ? widget : window;
            }
            if (window == nullptr) {
                return;
            }
            wasShown = QTest::qWaitForWindowExposed(window);
            const Painted painted(*window);
            lookAtOutlines(*window, painted, complaints);
            lookAtTexts(*window, painted, complaints);
            window->close();
        };
        QTimer::singleShot(0, &*d.f.window, look); // some of them return only when they are closed
        if (entry.startsWith("KEY")) {
            d.f.press(entry.constData());
        } else {
            d.f.find<QAction>(entry.constData())->trigger();
        }
        QTRY_VERIFY(wasShown);
        QCOMPARE(complaints.text(), QString());
        QVERIFY(complaints.looks() > 4);
    }

    // The about box divides its picture from its notices with one line.
    void theRuleOfTheAboutBoxIsASingleLine_data() { addPalettes(); }
    void theRuleOfTheAboutBoxIsASingleLine()
    {
        QFETCH(QPalette, palette);
        Desktop d(palette);
        QVERIFY(d.isActive());
        withAboutBox(d, [&](const frmAboutParts& about) {
            QVERIFY(about.rule != nullptr);
            const QRect pixels = about.painted.pixelsOf(*about.rule);
            const QColor ground = about.painted.at({pixels.center().x(), pixels.top() - 3});
            QStringList lines;
            bool wasLine = false;
            for (int y = pixels.top() - 3; y <= pixels.bottom() + 3; ++y) {
                const QColor color = about.painted.at({pixels.center().x(), y});
                const bool isLine = color != ground;
                if (isLine && !wasLine) {
                    lines << QString::number(contrast(ground, color), 'f', 1);
                }
                wasLine = isLine;
            }
            QCOMPARE(lines.size(), 1);
            QVERIFY2(lines.first().toDouble() >= kSeenShape, qPrintable(lines.first()));
        });
    }

    void theCableOfThePictureIsSeen_data() { addPalettes(); }
    void theCableOfThePictureIsSeen()
    {
        QFETCH(QPalette, palette);
        Desktop d(palette);
        QVERIFY(d.isActive());
        withAboutBox(d, [&](const frmAboutParts& about) {
            QVERIFY(about.picture != nullptr);
            // It hangs out of the reader, down to the corner.
            const QSize size = about.picture->size();
            const QRect corner(QPoint(size.width() * 90 / 100, size.height() * 88 / 100),
                               QPoint(size.width() - 1, size.height() - 1));
            const double seen = about.painted.contrastWithin(about.painted.pixelsOf(*about.picture, corner));
            QVERIFY2(seen >= kSeenShape, qPrintable(QString::number(seen)));
        });
    }

    // The grid marks the current row whether or not it has the focus, in the colours of now.
    void theHighlightFollowsThePalette()
    {
        Desktop d(lightPalette());
        QVERIFY(d.isActive());
        auto* grid = d.f.find<tables::ParamGrid>("grdCFG");
        grid->setRow(3);
        for (const QColor color : {QColor(0x80, 0x00, 0x80), QColor(0x00, 0x60, 0x00)}) {
            QPalette palette = darkPalette();
            palette.setColor(QPalette::Base, color.darker(400));
            palette.setColor(QPalette::Active, QPalette::Highlight, color);
            palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0x40, 0x40, 0x40));
            Desktop::show(palette);
            QTRY_COMPARE(grid->palette().color(QPalette::Active, QPalette::Base), palette.color(QPalette::Base));
            for (const char* focused : {"txtComments_CFG", "grdCFG"}) {
                d.f.find<QWidget>(focused)->setFocus();
                const Painted painted(*d.f.window);
                const QRect row = painted.pixelsOf(*grid->viewport(), grid->visualRect(grid->model()->index(2, 3)));
                QCOMPARE(painted.at({row.right() - 3, row.center().y()}).name(), color.name());
                const QRect next = painted.pixelsOf(*grid->viewport(), grid->visualRect(grid->model()->index(3, 3)));
                QVERIFY(painted.at({next.right() - 3, next.center().y()}) != color);
            }
        }
        // And when the window is not the active one.
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        const Painted painted(*d.f.window);
        const QRect row = painted.pixelsOf(*grid->viewport(), grid->visualRect(grid->model()->index(2, 3)));
        QCOMPARE(painted.at({row.right() - 3, row.center().y()}).name(), "#006000");
    }
};

static const testsupport::RunnableTest<ContrastTest> kRunnable;
#include "ContrastTest.moc"
