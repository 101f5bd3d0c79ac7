#pragma once

#include <cstddef>
#include <span>

namespace morlik::gallery
{

/// A file of `data/gallery`, which the build puts into the program.
struct Asset
{
    const char* Name;
    std::span<const unsigned char> Bytes;
};

/// The style sheet and the script of all galleries, which go into their folders as they are.
std::span<const Asset> Assets();

} // namespace morlik::gallery
