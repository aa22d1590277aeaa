#include "tests/system/driver/CommandInput.h"

#include <QSocketNotifier>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace windowdriver {

void listenToInput(QObject& context, std::function<void(const QByteArray&)> handler)
{
    auto* const input = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, &context);
    QObject::connect(input, &QSocketNotifier::activated, &context, [input, handler = std::move(handler)] {
        std::array<char, 4096> bytes{};
        const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) {
            return;
        }
        if (count <= 0) {
            input->setEnabled(false);
        }
        handler(QByteArray(bytes.data(), std::max<ssize_t>(count, 0)));
    });
}

bool writeToOutput(const QByteArray& bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count =
            ::write(STDOUT_FILENO, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno != EINTR) {
            return false;
        }
        done += std::max<ssize_t>(count, 0);
    }
    return true;
}

} // namespace windowdriver
