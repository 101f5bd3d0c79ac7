#pragma once

#include "base/Bytes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

/// Readers of a finished object set. They know the files by their format alone and share no record
/// and no table with the writers, so that a fault of a writer can't hide in its own reader.
namespace morlik::check
{

/// Bytes of one tile: 256 rows of 256 pixels of R, G, B.
constexpr std::size_t kSetTileBytes = 196608;

/// Where a face's picture lies; 8 bytes in the file.
struct WadTexture
{
    std::uint8_t X, Y;
    std::int16_t Tile;
    std::uint8_t FlipX, Width, FlipY, Height;

    bool operator==(const WadTexture&) const = default;
};

/// 40 bytes in the file. `FrameOffset` counts bytes, `FrameSize` 16-bit words.
struct WadAnimation
{
    std::int32_t FrameOffset;
    std::uint8_t FrameRate, FrameSize;
    std::int16_t State;
    std::int32_t Speed, Accel, LateralSpeed, LateralAccel;
    std::int16_t FrameStart, FrameEnd, NextAnimation, NextFrame;
    std::int16_t NumStateChanges, StateChange, NumAnimCommands, AnimCommand;
};

struct WadStateChange
{
    std::int16_t StateID, NumAnimDispatches, AnimDispatch;
};

struct WadAnimDispatch
{
    std::int16_t Low, High, NextAnimation, NextFrame;
};

/// 18 bytes in the file, so it is read field by field.
struct WadMoveable
{
    std::int32_t ObjectID;
    std::int16_t NumMeshes, StartingMesh;
    std::int32_t MeshTree, FrameOffset;
    std::int16_t Animation;
};

struct WadStaticMesh
{
    std::int32_t ObjectID;
    std::int16_t Mesh;
    std::array<std::int16_t, 6> VisibilityBox, CollisionBox;
    std::int16_t Flags;
};

/// All blocks of a WAD file, each array as long as its count said. `MeshPointers` are byte offsets
/// into `MeshData`; `MeshTrees` counts 32-bit words, `AnimCommands` and `Frames` 16-bit ones.
struct WadFile
{
    std::vector<WadTexture> Textures;
    std::vector<std::uint8_t> Pixels;
    std::vector<std::uint32_t> MeshPointers;
    std::vector<std::byte> MeshData;
    std::vector<WadAnimation> Animations;
    std::vector<WadStateChange> StateChanges;
    std::vector<WadAnimDispatch> AnimDispatches;
    std::vector<std::int16_t> AnimCommands;
    std::vector<std::int32_t> MeshTrees;
    std::vector<std::int16_t> Frames;
    std::vector<WadMoveable> Moveables;
    std::vector<WadStaticMesh> StaticMeshes;
};

/// `Type` 8 is a triangle, 9 a rectangle. `Texture` of a triangle is a number in its low 13 bits
/// with a corner code above; of a rectangle a number whose sign mirrors it.
struct WadMeshFace
{
    std::int16_t Type;
    std::vector<std::int16_t> Vertices;
    std::int16_t Texture, Flags;

    /// Number of the texture without mirror sign or corner code.
    int TextureNumber() const;
    bool operator==(const WadMeshFace&) const = default;
};

using WadPoint = std::array<std::int16_t, 3>;

struct WadMeshRecord
{
    WadPoint Centre;
    std::int32_t Radius;
    std::vector<WadPoint> Vertices;
    /// Above 0 the count of `Normals`, below 0 the negated count of `Lights`.
    std::int16_t NumNormals;
    std::vector<WadPoint> Normals;
    std::vector<std::int16_t> Lights;
    std::vector<WadMeshFace> Faces;
};

/// Walks a WAD file by its own counts. Throws `ReadFailure` with block and offset if the version
/// is not 129, a block runs past the end, or bytes are left behind the last block.
WadFile ReadWad(std::span<const std::byte> bytes);
WadFile ReadWad(const std::string& path);

/// Hands over the mesh records as they stand back to back, each filled up to a multiple of 4 bytes,
/// with their offsets. Throws `ReadFailure` if the walk doesn't end exactly at the end of the mesh
/// data.
void ForEachWadMesh(const WadFile& wad,
                    const std::function<void(std::size_t offset, const WadMeshRecord&)>& visit);

/// The record that a mesh number's pointer leads to; `ReadFailure` if there is none.
WadMeshRecord WadMeshOf(const WadFile& wad, std::size_t mesh);

/// Column and row of the left upper pixel; width and height count 256ths of a pixel, less 1.
/// `Sides` are the distances of the borders from the sprite's place. 16 bytes in the file.
struct SwdSpriteTexture
{
    std::int16_t Tile;
    std::uint8_t X, Y;
    std::uint16_t Width, Height;
    std::array<std::int16_t, 4> Sides;
};

/// The sprite textures of an object. 8 bytes in the file.
struct SwdSpriteSequence
{
    std::int32_t ObjectID;
    std::int16_t NegatedCount, FirstTexture;
};

struct SwdFile
{
    std::vector<SwdSpriteTexture> SpriteTextures;
    std::vector<std::uint8_t> Pixels;
    std::vector<SwdSpriteSequence> SpriteSequences;
};

SwdFile ReadSwd(std::span<const std::byte> bytes);

struct SfxSoundDetail
{
    std::int16_t Sample, Volume, Chance, Characteristics;

    /// Samples of the sound, 0 to 31; they follow `Sample`.
    int NumSamples() const { return (Characteristics & 0x7c) / 4; }
};

struct SfxFile
{
    std::array<std::int16_t, 370> SoundMap;
    std::vector<SfxSoundDetail> SoundDetails;
    std::vector<std::int32_t> SampleIndices;
};

SfxFile ReadSfx(std::span<const std::byte> bytes);

/// A whole file; `FileFailure` if it can't be read or is larger than any file of a set.
std::vector<std::byte> ReadFile(const std::string& path);

/// Lines of a text without their ends; `ReadFailure` unless every line ends in CR LF and neither
/// byte stands anywhere else.
std::vector<std::string> ReadLines(std::span<const std::byte> bytes);
std::vector<std::string> ReadLines(const std::string& path);

} // namespace morlik::check
