#pragma once

#include "base/VersionCode.h"

#include <cstddef>

namespace morlik
{

/// Sizes in bytes of what differs in the rooms of Tomb Raider I to IV. A room is
///
///   place and heights; size of the geometry in words (32-bit)
///   the geometry: vertices, rectangles, triangles and sprites, each behind their count (16-bit)
///   portals behind their count
///   Z and X sectors (16-bit each) and as many records as their product
///   ambient light; lights and static meshes, each behind their count; alternate room, flags
///
/// That of Tomb Raider V is a block with a mark and its size.
struct RoomLayout
{
    std::size_t Vertex;
    std::size_t Ambient;
    std::size_t Light;
    std::size_t Static;
    std::size_t Tail; ///< behind the static meshes
};

constexpr std::size_t kRoomHeadBytes = 16; ///< place and heights
constexpr std::size_t kRoomSpriteBytes = 4;
constexpr std::size_t kPortalBytes = 32;
constexpr std::size_t kSectorBytes = 8;

constexpr RoomLayout kRoomTR1{8, 2, 18, 18, 4};
constexpr RoomLayout kRoomTR2{12, 6, 24, 20, 4};
constexpr RoomLayout kRoomTR3{12, 4, 24, 20, 7};
constexpr RoomLayout kRoomTR4{12, 4, 46, 20, 7};

} // namespace morlik
