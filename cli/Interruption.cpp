#include "cli/Interruption.h"

#include <csignal>

namespace cli {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void noteInterruption(int signal)
{
    interrupted = 1;
    // Some systems forget the handler once it has run.
    std::signal(signal, noteInterruption);
}

} // namespace

void watchForInterruption()
{
    std::signal(SIGINT, noteInterruption);
    std::signal(SIGTERM, noteInterruption);
#ifdef SIGHUP
    std::signal(SIGHUP, noteInterruption);
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

bool isInterrupted()
{
    return interrupted != 0;
}

} // namespace cli
