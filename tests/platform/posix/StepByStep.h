#pragma once

#include <cerrno>
#include <csignal>

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test {

inline int waitFor(pid_t child)
{
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

inline void kill(pid_t child)
{
    ::kill(child, SIGKILL);
    while (WIFSTOPPED(waitFor(child))) {
    }
}

// A child process that does one thing and stands still before and after each of its system calls. It is killed where it
// stands when this object goes.
class StepByStep
{
public:
    // The action tells whether it succeeded.
    template <typename Action>
    explicit StepByStep(Action action)
        : m_child(::fork())
    {
        if (m_child == 0) {
            if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
                ::_exit(2);
            }
            ::raise(SIGSTOP);
            ::_exit(action() ? 0 : 1);
        }
        m_status = waitFor(m_child);
        if (isRunning()) {
            ::ptrace(PTRACE_SETOPTIONS, m_child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        }
    }
    ~StepByStep()
    {
        if (isRunning()) {
            kill(m_child);
        }
    }
    StepByStep(const StepByStep&) = delete;
    StepByStep& operator=(const StepByStep&) = delete;

    [[nodiscard]] bool isRunning() const { return WIFSTOPPED(m_status); }
    [[nodiscard]] bool mayNotBeTraced() const { return WIFEXITED(m_status) && WEXITSTATUS(m_status) == 2; }
    [[nodiscard]] bool hasSucceeded() const { return WIFEXITED(m_status) && WEXITSTATUS(m_status) == 0; }

    void step()
    {
        ::ptrace(PTRACE_SYSCALL, m_child, nullptr, nullptr);
        m_status = waitFor(m_child);
    }

    // The system call that the child is about to make, or -1 when it has just made one.
    [[nodiscard]] long callAhead() const
    {
        __ptrace_syscall_info info{};
        if (::ptrace(PTRACE_GET_SYSCALL_INFO, m_child, sizeof info, &info) <= 0 ||
            info.op != PTRACE_SYSCALL_INFO_ENTRY) {
            return -1;
        }
        return static_cast<long>(info.entry.nr);
    }

private:
    pid_t m_child;
    int m_status = 0;
};

} // namespace test
