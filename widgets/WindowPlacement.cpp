#include "widgets/WindowPlacement.h"

#include "platform/qt/AnsiText.h"
#include "text/HexText.h"
#include "widgets/NormalPlacement.h"

#include <QGuiApplication>
#include <QPoint>
#include <QScreen>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace widgets {

namespace {

std::string sectionOf(const QString& formName)
{
    return "Select_Window_" + platform::toAnsi(formName);
}

constexpr QMargins kUsualFrame(8, 32, 8, 8);
constexpr int kReachableWidth = 100; // of a title bar, in logical pixels
constexpr int kTitleBarHeight = 24;  // where the window system has not told it yet, or has none

// The leading number of a text, kept within what a screen could ever be.
int boundedNumber(std::string_view text)
{
    constexpr double kFarthest = 100'000;
    return static_cast<int>(std::clamp(text::decimalNumber(text), -kFarthest, kFarthest));
}

int stateOf(const QWidget& form)
{
    if (form.isMinimized()) {
        return kMinimisedWindow;
    }
    return form.isMaximized() ? kMaximisedWindow : kNormalWindow;
}

QMargins frameOf(const QWidget& form)
{
    const QRect outer = form.frameGeometry();
    const QRect inner = form.geometry();
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

QList<QRect> screensFrom(const QWidget& form)
{
    QList<QRect> screens{form.screen()->availableGeometry()};
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen != form.screen()) {
            screens << screen->availableGeometry();
        }
    }
    return screens;
}

// Wide enough and high enough to be taken hold of.
bool canBeReached(const QRect& titleBar, const QList<QRect>& screens)
{
    return std::any_of(screens.begin(), screens.end(), [&titleBar](const QRect& screen) {
        const QRect seen = screen.intersected(titleBar);
        return seen.width() >= std::min(kReachableWidth, titleBar.width()) && 2 * seen.height() > titleBar.height();
    });
}

int distance(const QRect& screen, QPoint point)
{
    const QPoint nearest(std::clamp(point.x(), screen.left(), screen.right()),
                         std::clamp(point.y(), screen.top(), screen.bottom()));
    return (point - nearest).manhattanLength();
}

// Moved and made smaller until the window with its frame is within the area.
QRect within(const QRect& area, const QRect& wanted, const QMargins& frame, const QSize& smallest)
{
    const QSize frameSize(frame.left() + frame.right(), frame.top() + frame.bottom());
    const QSize size = wanted.size().boundedTo(area.size() - frameSize).expandedTo(smallest);
    const QPoint highest = area.topLeft() + QPoint(area.width() - frameSize.width() - size.width(),
                                                   area.height() - frameSize.height() - size.height());
    return {QPoint(std::max(area.left(), std::min(wanted.x(), highest.x())),
                   std::max(area.top(), std::min(wanted.y(), highest.y()))),
            size};
}

void put(QWidget& form, const QRect& place)
{
    form.resize(place.size());
    form.move(place.topLeft());
}

} // namespace

QRect reachablePlace(const QRect& wanted, const QMargins& frame, const QSize& smallest, const QList<QRect>& screens)
{
    QRect all;
    for (const QRect& screen : screens) {
        all |= screen;
    }
    const QRect outer(wanted.topLeft(), wanted.size().grownBy(frame));
    const QRect titleBar(outer.topLeft(), QSize(outer.width(), std::max(frame.top(), kTitleBarHeight)));
    const bool fits = outer.width() <= all.width() && outer.height() <= all.height();
    if (fits && canBeReached(titleBar, screens)) {
        return {wanted.topLeft(), wanted.size().expandedTo(smallest)};
    }
    const auto nearest =
        std::min_element(screens.begin(), screens.end(), [&outer](const QRect& one, const QRect& other) {
            return distance(one, outer.center()) < distance(other, outer.center());
        });
    return within(*nearest, wanted, frame, smallest);
}

void leaveRoomForFrame(QWidget& form)
{
    const QSize most = form.screen()->availableGeometry().marginsRemoved(kUsualFrame).size();
    form.resize(form.size().boundedTo(most).expandedTo(form.minimumSizeHint()));
}

void fitOntoScreen(QWidget& form)
{
    put(form,
        within(form.screen()->availableGeometry(), {form.pos(), form.size()}, frameOf(form), form.minimumSizeHint()));
}

void LoadWindowPlacement(const platform::ProfileStrings& settings, const QString& formName, int& left, int& top,
                         int& width, int& height, int& state, bool& found)
{
    const std::string section = sectionOf(formName);
    found = false;
    state = boundedNumber(settings.get(section, "WindowState"));
    const std::string stored = settings.get(section, "Settings");
    if (stored.find(',') == std::string::npos) {
        return;
    }
    std::array<int, 4> numbers{};
    std::string_view rest = stored;
    for (int& number : numbers) {
        const std::size_t comma = rest.find(',');
        number = boundedNumber(rest.substr(0, comma));
        rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
    }
    if (numbers[2] <= 0 || numbers[3] <= 0) {
        return;
    }
    left = numbers[0];
    top = numbers[1];
    width = numbers[2];
    height = numbers[3];
    found = true;
}

void SaveWindowPlacement(platform::ProfileStrings& settings, const QWidget& form)
{
    const std::string section = sectionOf(form.objectName());
    const int state = stateOf(form);
    // pos() and size() are what move() and resize() take, so a window does not creep by its frame at each start.
    const bool isNormal = state == kNormalWindow && !form.isFullScreen();
    const QRect place = isNormal ? QRect(form.pos(), form.size()) : NormalPlacement::lastOf(form);
    const QString placement =
        QStringLiteral("%1,%2,%3,%4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
    const platform::ProfileStrings::Together together(settings);
    settings.set(section, "Settings", platform::toAnsi(placement));
    settings.set(section, "WindowState", std::to_string(state));
}

bool restorePlacement(const platform::ProfileStrings& settings, QWidget& form)
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    // Kept behaviour kb-never-maximised: the state is stored, and not read.
    int ignoredState = kNormalWindow; // windows always come back in their normal state
    bool found = false;
    LoadWindowPlacement(settings, form.objectName(), left, top, width, height, ignoredState, found);
    NormalPlacement& normalPlacement = NormalPlacement::of(form);
    if (found) {
        put(form, reachablePlace({left, top, width, height}, frameOf(form), form.minimumSizeHint(), screensFrom(form)));
        normalPlacement.take();
    }
    return found;
}

} // namespace widgets
