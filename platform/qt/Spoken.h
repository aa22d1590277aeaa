#pragma once

#include <QWidget>

namespace platform {

// What a screen reader says of a control: what it is, where no label or caption says so, and what it is for.
inline void setSpoken(QWidget& control, const QString& name, const QString& description)
{
    if (!name.isEmpty()) {
        control.setAccessibleName(name);
    }
    control.setAccessibleDescription(description);
}

// For a control whose label or caption is its name.
inline void setSpoken(QWidget& control, const QString& description)
{
    setSpoken(control, {}, description);
}

} // namespace platform
