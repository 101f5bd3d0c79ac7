#pragma once

#include "level/RoomLayout.h"
#include "samples/LevelContent.h"
#include "samples/MarkedWriter.h"

#include <span>
#include <string_view>

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

/// Not for Tomb Raider V, which has none.
const RoomLayout& RoomLayoutOf(VersionCode game);

/// A section behind the rooms.
struct SectionLayout
{
    std::string_view Name;
    std::size_t CountBytes;  ///< 0 for a section of fixed size
    std::size_t RecordBytes; ///< size of a record, or of such a section
};

/// The sections behind the rooms in the order of the file. Of the zones there are as many as boxes.
std::vector<SectionLayout> SectionsOf(VersionCode game);

/// Tomb Raider V: unused bytes of its head, behind Lara and weather.
constexpr std::size_t kHeadBytesTR5 = 28;

} // namespace morlik::samples
