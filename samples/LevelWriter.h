#pragma once

#include "samples/LevelContent.h"
#include "samples/MarkedWriter.h"

#include <span>

namespace morlik::samples
{

/// The level as a file of its game.
LevelFile WriteLevel(const LevelContent& level);

/// The level block of a Tomb Raider IV level before its compression: rooms, models, textures and
/// sound tables. Damage done to it here can be read only after `WrapTR4`.
LevelFile WriteLevelBlock(const LevelContent& level);

/// A Tomb Raider IV file around a level block: the tiles before it, the samples behind it. The
/// sizes of its streams are marked as counts ("Tiles32 inflated", "Tiles32 compressed", ...).
LevelFile WrapTR4(const LevelContent& level, std::span<const std::byte> levelBlock);

/// A zlib stream of the bytes.
std::vector<std::byte> Compress(std::span<const std::byte> bytes);

} // namespace morlik::samples
