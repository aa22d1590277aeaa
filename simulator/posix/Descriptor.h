#pragma once

#include <unistd.h>

#include <utility>

namespace simulator {

// Owns a file descriptor.
class Descriptor final
{
public:
    Descriptor() = default;
    explicit Descriptor(int fd)
        : m_fd(fd)
    {}
    Descriptor(Descriptor&& other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
    }

    [[nodiscard]] int get() const { return m_fd; } // -1 when there is none
    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }

private:
    int m_fd = -1;
};

} // namespace simulator
