#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <cerrno>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test {

constexpr uid_t kNobody = 65534;

// Runs an action in a child process and gives back the text that it returned, so that the action may change what holds
// for a whole process: its user, its limits, its session.
template <typename Action>
[[nodiscard]] QByteArray inChild(Action action)
{
    int ends[2];
    if (::pipe(ends) != 0) {
        qFatal("no pipe to be had");
    }
    const pid_t child = ::fork();
    if (child == 0) {
        const QByteArray text = action();
        const ssize_t count = ::write(ends[1], text.data(), static_cast<size_t>(text.size()));
        ::_exit(count == text.size() ? 0 : 1);
    }
    ::close(ends[1]);
    QByteArray text;
    char buffer[4096];
    for (ssize_t count = 1; count > 0;) {
        count = ::read(ends[0], buffer, sizeof buffer);
        text.append(buffer, qMax<ssize_t>(count, 0));
    }
    ::close(ends[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? text : QByteArray("(the child process failed)");
}

// The same as a user whom file permissions bind: the administrator, whom they do not, becomes nobody.
template <typename Action>
[[nodiscard]] QByteArray asOrdinaryUser(Action action)
{
    return inChild([&action]() -> QByteArray {
        if (::geteuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) {
            return "(cannot become an ordinary user)";
        }
        return action();
    });
}

} // namespace test
