#pragma once

#include "base/Bytes.h"

#include <sstream>

namespace morlik
{

/// Fails for a set whose records can't be true, with a text made of texts and numbers that tells
/// which record it is.
template <class... Pieces>
[[noreturn]] void FailDamaged(const Pieces&... pieces)
{
    std::ostringstream text;
    (text << ... << pieces);
    throw ReadFailure(text.str());
}

} // namespace morlik
