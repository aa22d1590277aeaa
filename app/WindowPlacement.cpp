#include "app/WindowPlacement.h"

#include "app/NormalPlacement.h"
#include "platform/qt/AnsiText.h"
#include "tables/HexText.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace app {

namespace {

std::string sectionOf(const QString& formName)
{
    return "Select_Window_" + platform::toAnsi(formName);
}

// The leading number of a text, kept within what a screen could ever be.
int boundedNumber(std::string_view text)
{
    constexpr double kFarthest = 100'000;
    return static_cast<int>(std::clamp(tables::decimalNumber(text), -kFarthest, kFarthest));
}

int stateOf(const QWidget& form)
{
    if (form.isMinimized()) {
        return kMinimisedWindow;
    }
    return form.isMaximized() ? kMaximisedWindow : kNormalWindow;
}

void placeOnScreen(QWidget& form, const QRect& placement)
{
    const QScreen* screen = QGuiApplication::screenAt(placement.center());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    const QRect available = screen->availableGeometry();
    const QSize frame = form.frameSize() - form.size();
    const QSize size = placement.size().boundedTo(available.size() - frame).expandedTo(form.minimumSizeHint());
    const QPoint lowest = available.topLeft();
    const QPoint highest = lowest + QPoint(available.width() - frame.width() - size.width(),
                                           available.height() - frame.height() - size.height());
    form.resize(size);
    form.move(std::max(lowest.x(), std::min(placement.x(), highest.x())),
              std::max(lowest.y(), std::min(placement.y(), highest.y())));
}

} // namespace

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
    const QRect place = state == kNormalWindow ? QRect(form.pos(), form.size()) : NormalPlacement::lastOf(form);
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
        placeOnScreen(form, {left, top, width, height});
        normalPlacement.take();
    }
    return found;
}

} // namespace app
