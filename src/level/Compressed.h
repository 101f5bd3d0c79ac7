#pragma once

#include "level/Sections.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace morlik
{

/// What the compressed files of Tomb Raider IV and V have in common.

/// Inflated and compressed size of a zlib block, the two words before its stream.
struct BlockSizes
{
    std::int32_t Inflated;
    std::int32_t Compressed;
};

/// The sizes and the stream of a zlib block. A stream that is longer than the file is a
/// `ReadFailure`, and so is an inflated size of 0 or less, or a huge one that no stream of this
/// length can have.
std::span<const std::byte> TakeBlock(ByteReader& reader, BlockSizes& sizes);

/// Inflates `stream` into `target`. A damaged stream is no failure: what it gave stays, and the
/// rest of `target` is zero.
void Inflate(std::span<const std::byte> stream, std::span<std::byte> target, PhaseTimes& times);

/// The file up to the level data: tile counts and the three tile blocks, of which the 32-bit one
/// is inflated straight into `Tiles32`.
void ReadTileBlocks(LevelReading& reading);

/// Sprites, cameras, flyby cameras, sound sources, boxes, animated textures.
void SkipScenery(ByteReader& reader);

/// The libraries that inflate blocks, and their versions.
std::string InflateLibraries();

/// How the fields of an object texture stand in the file: 22 bytes, unused ones, width and height,
/// unused ones.
struct TextureRecordLayout
{
    std::size_t Gap;
    std::size_t Tail;

    std::size_t Bytes() const { return 22 + Gap + 8 + Tail; }
};

/// Object textures, which are converted too. The first of the layouts, all of one size, is taken
/// unless the sizes make sense in another one alone.
void ReadObjectTexturesTR45(LevelReading& reading, std::span<const TextureRecordLayout> layouts);

/// Items and AI objects.
void SkipItemsTR45(ByteReader& reader);

} // namespace morlik
