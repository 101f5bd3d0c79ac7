#pragma once

#include "base/Bytes.h"

#include <string>
#include <utility>

namespace morlik
{

/// `value` as a `To`. A value that the type cannot hold is a `ReadFailure`: such values come from
/// files only.
template <class To, class From>
To narrow(From value)
{
    if (!std::in_range<To>(value))
        throw ReadFailure("the value " + std::to_string(value) + " is out of its range");
    return static_cast<To>(value);
}

/// The low 16 bits of `value` as a signed word, the form in which records keep codes and numbers.
constexpr std::int16_t Word(std::int32_t value)
{
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
}

/// Whether `count` elements from `first` on lie in a table of `size`. None lie anywhere.
inline bool Inside(std::int64_t first, std::int64_t count, std::size_t size)
{
    if (count <= 0)
        return count == 0;
    return first >= 0 && first + count <= static_cast<std::int64_t>(size);
}

} // namespace morlik
