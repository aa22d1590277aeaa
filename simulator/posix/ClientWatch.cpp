#include "simulator/posix/ClientWatch.h"

#include <sys/inotify.h>

#include <array>
#include <cstddef>
#include <cstring>

namespace simulator {

ClientWatch::ClientWatch()
    : m_inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{}

int ClientWatch::add(const std::string& terminal) const
{
    return ::inotify_add_watch(m_inotify.get(), terminal.c_str(), IN_OPEN | IN_CLOSE);
}

void ClientWatch::remove(int watch) const
{
    ::inotify_rm_watch(m_inotify.get(), watch);
}

std::vector<ClientWatch::Seen> ClientWatch::news() const
{
    std::vector<Seen> seen;
    std::array<char, 4096> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read
    for (ssize_t count = 0; (count = ::read(m_inotify.get(), buffer.data(), buffer.size())) > 0;) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(count);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            at += sizeof event + event.len;
            if ((event.mask & IN_OPEN) != 0) {
                seen.push_back({event.wd, Event::Opened});
            } else if ((event.mask & IN_CLOSE) != 0) {
                seen.push_back({event.wd, Event::Closed});
            }
        }
    }
    return seen;
}

} // namespace simulator
