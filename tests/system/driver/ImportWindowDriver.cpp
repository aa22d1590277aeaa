#include <QtPlugin>

// A program whose Qt is part of it takes no plugins from outside: this one has the window driver in it.
Q_IMPORT_PLUGIN(WindowDriverPlugin)
