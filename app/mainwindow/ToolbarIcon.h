#pragma once

#include <QIcon>

namespace app {

// One of the toolbar's pictures by the name of its drawing ("retrieve", "abort"): drawn in two tones, which are the
// text's and the highlight's colours of whatever palette the system has.
[[nodiscard]] QIcon toolbarIcon(const QString& name);

} // namespace app
