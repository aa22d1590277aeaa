#include "simulator/posix/Signals.h"

#include "simulator/posix/SetupError.h"

#include <sys/signalfd.h>

#include <csignal>

namespace simulator {

Signals::Signals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    if (::sigprocmask(SIG_BLOCK, &signals, nullptr) != 0) {
        throw systemError("hold back signals");
    }
    m_descriptor = Descriptor(::signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
    if (!m_descriptor.isOpen()) {
        throw systemError("wait for signals");
    }
}

const char* Signals::take() const
{
    signalfd_siginfo signal{};
    if (::read(m_descriptor.get(), &signal, sizeof signal) != static_cast<ssize_t>(sizeof signal)) {
        return nullptr;
    }
    return signal.ssi_signo == SIGINT ? "SIGINT" : "SIGTERM";
}

} // namespace simulator
