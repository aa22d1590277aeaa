#include "tests/support/SourceFile.h"

namespace testsupport {

QString sourceFile(const QString& name)
{
    return QStringLiteral(TESLIN_SOURCE_DIR "/") + name;
}

} // namespace testsupport
