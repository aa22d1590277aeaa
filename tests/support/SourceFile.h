#pragma once

#include <QString>

namespace testsupport {

// The full name of a file of the source tree, such as "files/Languages.txt".
[[nodiscard]] QString sourceFile(const QString& name);

} // namespace testsupport
