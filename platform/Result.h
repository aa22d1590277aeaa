#pragma once

#include "platform/SystemError.h"

#include <optional>
#include <utility>
#include <variant>

namespace platform {

// The value that an operation was asked for, or the system's error. Test it first: asking for the half that is not
// there throws std::bad_variant_access.
template <typename Value>
class [[nodiscard]] Result final
{
public:
    Result(Value value)
        : m_content(std::in_place_index<0>, std::move(value))
    {}
    Result(SystemError error)
        : m_content(std::in_place_index<1>, std::move(error))
    {}

    [[nodiscard]] explicit operator bool() const { return m_content.index() == 0; }
    [[nodiscard]] const Value& value() const& { return std::get<0>(m_content); }
    [[nodiscard]] Value value() && { return std::get<0>(std::move(m_content)); }
    [[nodiscard]] const SystemError& error() const { return std::get<1>(m_content); }

private:
    std::variant<Value, SystemError> m_content;
};

// The outcome of an operation that gives nothing back: a default-constructed one is success. error() of a success
// throws std::bad_optional_access.
template <>
class [[nodiscard]] Result<void> final
{
public:
    Result() = default;
    Result(SystemError error)
        : m_error(std::move(error))
    {}

    [[nodiscard]] explicit operator bool() const { return !m_error.has_value(); }
    [[nodiscard]] const SystemError& error() const { return m_error.value(); }

private:
    std::optional<SystemError> m_error;
};

} // namespace platform
