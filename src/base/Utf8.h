#pragma once

#include <cstddef>
#include <string_view>

namespace morlik
{

/// Bytes of the UTF-8 character that `text`, which isn't empty, begins with; 0 where it begins with
/// none.
std::size_t Utf8Length(std::string_view text);

} // namespace morlik
