#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <system_error>
#include <vector>

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

// System calls that fail by order, as those of a broken disk or a server that is away would. What is ordered holds for
// the rest of the process's life, so it is a child process that orders it.
namespace test {

namespace detail {

inline bool install(std::vector<sock_filter> program)
{
    const sock_fprog filter = {static_cast<unsigned short>(program.size()), program.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

inline sock_filter load(std::size_t offset)
{
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<unsigned>(offset));
}

} // namespace detail

// From now on the calls fail with the error, whatever they are asked for.
inline bool failCalls(std::initializer_list<long> calls, int error)
{
    std::vector<sock_filter> program = {detail::load(offsetof(seccomp_data, nr))};
    for (const long call : calls) {
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    return detail::install(std::move(program));
}

// The same for calls whose first argument is the descriptor.
inline bool failCallsOn(int descriptor, std::initializer_list<long> calls, int error)
{
    std::vector<sock_filter> program;
    for (const long call : calls) {
        program.push_back(detail::load(offsetof(seccomp_data, nr)));
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 3));
        program.push_back(detail::load(offsetof(seccomp_data, args)));
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(descriptor), 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    return descriptor >= 0 && detail::install(std::move(program));
}

// The same for one call on the descriptor that is asked for one thing: its argument with this index is the value.
inline bool failCallOn(int descriptor, long call, unsigned index, unsigned value, int error)
{
    constexpr std::size_t kArguments = offsetof(seccomp_data, args);
    return descriptor >= 0 &&
           detail::install({detail::load(offsetof(seccomp_data, nr)),
                            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 5),
                            detail::load(kArguments),
                            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(descriptor), 0, 3),
                            detail::load(kArguments + index * sizeof(seccomp_data::args[0])),
                            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 0, 1),
                            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
                            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)});
}

// The last descriptor of this process that has the file open; -1 when none has.
inline int descriptorOf(const std::filesystem::path& file)
{
    int found = -1;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry.path(), gone) == file) {
            found = std::max(found, std::stoi(entry.path().filename().string()));
        }
    }
    return found;
}

} // namespace test
