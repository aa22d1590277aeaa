#pragma once

class QWidget;

namespace report {

// Where windows stood last time. A window is known by its object name.
class PlacementStore
{
public:
    virtual ~PlacementStore() = default;

    // Gives a window that is not shown yet its last position and size. False, and the window as it was, when there are
    // none.
    virtual bool restore(QWidget& form) = 0;
    // Remembers position, size and state of a window. Tells no errors.
    virtual void save(const QWidget& form) = 0;
};

} // namespace report
