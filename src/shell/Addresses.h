#pragma once

namespace morlik
{

/// Where the project is reached.
inline constexpr const char* kWebAddress = "https://morlik.invalid/";
inline constexpr const char* kMailAddress = "mail@morlik.invalid";

} // namespace morlik
