#pragma once

#include "platform/windows/Windows.h"

#include <utility>

namespace platform {

// Owns a handle of the system's and closes it at the end of its life.
class Handle final
{
public:
    Handle() = default;
    // Takes what the system's calls give for a failure, too: then nothing is open.
    explicit Handle(HANDLE handle)
        : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle)
    {}
    Handle(Handle&& other) noexcept
        : m_handle(std::exchange(other.m_handle, nullptr))
    {}
    Handle& operator=(Handle&& other) noexcept
    {
        if (this != &other) {
            close();
            m_handle = std::exchange(other.m_handle, nullptr);
        }
        return *this;
    }
    ~Handle() { close(); }

    [[nodiscard]] bool isOpen() const { return m_handle != nullptr; }
    [[nodiscard]] HANDLE get() const { return m_handle; }

    void close()
    {
        if (HANDLE handle = std::exchange(m_handle, nullptr)) {
            ::CloseHandle(handle);
        }
    }

private:
    HANDLE m_handle = nullptr;
};

} // namespace platform
