#pragma once

#include "base/Bytes.h"
#include "base/Reporter.h"
#include "level/LevelData.h"
#include "level/TrMainState.h"

#include <limits>

namespace morlik
{

/// Sections that the level files of several games share. Each function reads one section where the
/// reader stands, count first. What differs between the games comes in as data.

/// What a section makes of a count that is not above 0.
enum class CountRule : std::uint8_t
{
    Positive,          ///< 0 or less fails
    ZeroIsEmpty,       ///< 0 leaves the table empty, less fails
    ZeroOrLessIsEmpty, ///< both leave it empty; the count stays as it was read
};

/// What is on the way through one load.
struct LevelReading
{
    ByteReader& Reader;
    LevelData& Level;
    TrMainState& State;
    Reporter& Report;
};

/// What differs between the games in the object sections, which stand in one row in all of them.
struct ObjectLayout
{
    bool WideAnimations;      ///< 40-byte animations with lateral speeds; else 32 bytes
    std::size_t MoveableTail; ///< unused bytes behind each moveable
    CountRule Meshes;         ///< of mesh data and mesh pointers
    CountRule Changes;        ///< of state changes, dispatches and commands
    CountRule Statics;
    CountRule Sounds; ///< of sound details and sample indices
    std::size_t SoundMapSlots;
};

/// Objects of each kind that are taken: their numbers end at 500 and 89, and a set names each one.
constexpr std::int32_t kMostObjects = 4096;
/// Mesh pointers that are taken: objects tell their meshes by 16-bit numbers.
constexpr std::int32_t kMostMeshPointers = 65536;
constexpr std::int32_t kAnyCount = std::numeric_limits<std::int32_t>::max();

/// A 32-bit count that satisfies `rule` and is not above `most`.
std::int32_t ReadCount(ByteReader& reader, CountRule rule, std::int32_t most = kAnyCount);

/// A 32-bit count and as many records, each as it stands in memory.
template <Packed Record>
void ReadTable(ByteReader& reader, const char* section, CountRule rule, std::int32_t& count,
               std::vector<Record>& table, std::int32_t most = kAnyCount)
{
    reader.Section(section);
    count = ReadCount(reader, rule, most);
    if (count > 0)
        table = reader.Table<Record>(count);
}

/// A 32-bit count and as many records of `size` bytes, passed over.
void SkipTable(ByteReader& reader, const char* section, std::size_t size);

/// A 16-bit count and as many records of `size` bytes, passed over.
void SkipShortTable(ByteReader& reader, const char* section, std::size_t size);

/// Mesh data and pointers, animations with their tables, frames, moveables, static meshes.
void ReadObjects(LevelReading& reading, const ObjectLayout& layout);

/// Boxes of `boxBytes`, overlaps, and the zones, which take `zoneBytes` a box.
void SkipBoxes(ByteReader& reader, std::size_t boxBytes, std::size_t zoneBytes);

/// Sound map and sound details.
void ReadSoundMap(LevelReading& reading, const ObjectLayout& layout);
void ReadSoundDetails(LevelReading& reading, const ObjectLayout& layout);
void ReadSampleIndices(LevelReading& reading, const ObjectLayout& layout);

/// As many samples as there are sample indices, each a RIFF file followed by `gap` bytes, from
/// offset `start` on. The first that is none ends the list: it and the later ones stay empty.
void ReadRiffSamples(LevelReading& reading, std::size_t start, std::size_t gap);

} // namespace morlik
