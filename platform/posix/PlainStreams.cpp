#include "platform/PlainStreams.h"

namespace platform {

// They are so by themselves.

PlainStreams::PlainStreams()
{
    static_cast<void>(m_codePage);
}

PlainStreams::~PlainStreams() = default;

} // namespace platform
