#include "widgets/NormalPlacement.h"

#include <QEvent>

#include <chrono>

namespace widgets {

namespace {

constexpr std::chrono::milliseconds kSettled{200};

bool isNormal(const QWidget& form)
{
    return !form.isMinimized() && !form.isMaximized() && !form.isFullScreen();
}

} // namespace

NormalPlacement& NormalPlacement::of(QWidget& form)
{
    auto* const placement = form.findChild<NormalPlacement*>(QString(), Qt::FindDirectChildrenOnly);
    return placement != nullptr ? *placement : *new NormalPlacement(form);
}

QRect NormalPlacement::lastOf(const QWidget& form)
{
    const auto* const placement = form.findChild<const NormalPlacement*>(QString(), Qt::FindDirectChildrenOnly);
    if (placement != nullptr && !placement->place().isNull()) {
        return placement->place();
    }
    const QPoint frame = form.geometry().topLeft() - form.frameGeometry().topLeft();
    return form.normalGeometry().translated(-frame);
}

NormalPlacement::NormalPlacement(QWidget& form)
    : QObject(&form)
    , m_form(form)
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(kSettled);
    connect(&m_settling, &QTimer::timeout, this, &NormalPlacement::take);
    form.installEventFilter(this);
}

void NormalPlacement::take()
{
    m_place = {m_form.pos(), m_form.size()};
}

void NormalPlacement::follow()
{
    if (m_form.isVisible() && isNormal(m_form)) {
        m_settling.start();
    } else {
        m_settling.stop();
    }
}

bool NormalPlacement::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::WindowStateChange:
        follow();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace widgets
