#pragma once

#include <cerrno>
#include <utility>

#include <unistd.h>

namespace platform {

// Owns a file descriptor and closes it at the end of its life.
class Descriptor final
{
public:
    Descriptor() = default;
    explicit Descriptor(int number)
        : m_number(number)
    {}
    Descriptor(Descriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, kNone))
    {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        if (this != &other) {
            static_cast<void>(close());
            m_number = std::exchange(other.m_number, kNone);
        }
        return *this;
    }
    ~Descriptor() { static_cast<void>(close()); }

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    [[nodiscard]] int number() const { return m_number; }

    // False when the system reports, only now, that something written before was lost (errno tells what).
    [[nodiscard]] bool close()
    {
        const int number = std::exchange(m_number, kNone);
        return number < 0 || ::close(number) == 0;
    }

private:
    static constexpr int kNone = -1;
    int m_number = kNone;
};

// Repeats a system call for as long as a signal interrupts it.
template <typename Call>
auto uninterrupted(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

} // namespace platform
