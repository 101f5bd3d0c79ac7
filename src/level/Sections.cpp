#include "level/Sections.h"

#include <algorithm>

namespace morlik
{

namespace
{

constexpr std::int64_t kRiffHeaderBytes = 8; ///< "RIFF" and the length of what follows

void ReadMeshes(ByteReader& reader, LevelData& level, CountRule rule)
{
    reader.Section("mesh data");
    level.NumMeshWords = ReadCount(reader, rule);
    level.MeshData = reader.TakeTable(level.NumMeshWords, 2);
    ReadTable(reader, "mesh pointers", rule, level.NumMeshPointers, level.MeshPointers,
              kMostMeshPointers);
}

void ReadAnimations(ByteReader& reader, LevelData& level, const ObjectLayout& layout)
{
    if (layout.WideAnimations) {
        ReadTable(reader, "animations", CountRule::Positive, level.NumAnimations, level.Animations);
    } else {
        reader.Section("animations");
        level.NumAnimations = ReadCount(reader, CountRule::Positive);
        level.Animations = ShortAnimationFields::ReadTable(reader, level.NumAnimations);
    }
    ReadTable(reader, "state changes", layout.Changes, level.NumStateChanges, level.StateChanges);
    ReadTable(reader, "dispatches", layout.Changes, level.NumAnimDispatches, level.AnimDispatches);
    ReadTable(reader, "commands", layout.Changes, level.NumAnimCommands, level.AnimCommands);
    ReadTable(reader, "mesh trees", CountRule::Positive, level.NumMeshTrees, level.MeshTrees);
    reader.Section("frames");
    level.NumFrames = ReadCount(reader, CountRule::Positive);
    level.Frames = reader.TakeTable(level.NumFrames, sizeof(std::int16_t));
}

void ReadMoveables(ByteReader& reader, LevelData& level, std::size_t tail)
{
    reader.Section("moveables");
    level.NumMoveables = ReadCount(reader, CountRule::Positive, kMostObjects);
    const auto size = MoveableFields::kBytes + tail;
    ByteReader records(reader.TakeTable(level.NumMoveables, size));
    level.Moveables.resize(static_cast<std::size_t>(level.NumMoveables));
    for (Moveable& moveable : level.Moveables) {
        MoveableFields::Read(records, moveable);
        records.Skip(tail);
    }
}

} // namespace

std::int32_t ReadCount(ByteReader& reader, CountRule rule, std::int32_t most)
{
    const auto count = reader.Read<std::int32_t>();
    const bool good = count > 0 || (count == 0 && rule != CountRule::Positive) ||
                      rule == CountRule::ZeroOrLessIsEmpty;
    if (!good)
        reader.Fail("a count of " + std::to_string(count));
    if (count > most)
        reader.Fail("a count of " + std::to_string(count) + ", at most " + std::to_string(most) +
                    " are taken");
    return count;
}

void SkipTable(ByteReader& reader, const char* section, std::size_t size)
{
    reader.Section(section);
    reader.SkipTable(reader.Read<std::int32_t>(), size);
}

void SkipShortTable(ByteReader& reader, const char* section, std::size_t size)
{
    reader.Section(section);
    reader.SkipTable(reader.Read<std::int16_t>(), size);
}

void ReadObjects(LevelReading& reading, const ObjectLayout& layout)
{
    LevelData& level = reading.Level;
    ReadMeshes(reading.Reader, level, layout.Meshes);
    ReadAnimations(reading.Reader, level, layout);
    ReadMoveables(reading.Reader, level, layout.MoveableTail);
    ReadTable(reading.Reader, "static meshes", layout.Statics, level.NumStaticMeshes,
              level.StaticMeshes, kMostObjects);
}

void SkipBoxes(ByteReader& reader, std::size_t boxBytes, std::size_t zoneBytes)
{
    reader.Section("boxes");
    const auto boxes = reader.Read<std::int32_t>();
    reader.SkipTable(boxes, boxBytes);
    SkipTable(reader, "overlaps", 2);
    reader.Section("zones");
    reader.SkipTable(boxes, zoneBytes);
}

void ReadSoundMap(LevelReading& reading, const ObjectLayout& layout)
{
    reading.Reader.Section("sound map");
    const auto map =
        reading.Reader.Table<std::int16_t>(static_cast<std::int64_t>(layout.SoundMapSlots));
    std::copy(map.begin(), map.end(), reading.Level.SoundMap.begin());
    ReadSoundDetails(reading, layout);
}

void ReadSoundDetails(LevelReading& reading, const ObjectLayout& layout)
{
    ReadTable(reading.Reader, "sound details", layout.Sounds, reading.Level.NumSoundDetails,
              reading.Level.SoundDetails);
}

void ReadSampleIndices(LevelReading& reading, const ObjectLayout& layout)
{
    ReadTable(reading.Reader, "sample indices", layout.Sounds, reading.Level.NumSampleIndices,
              reading.Level.SampleIndices);
}

void ReadRiffSamples(LevelReading& reading, std::size_t start, std::size_t gap)
{
    ByteReader& reader = reading.Reader;
    LevelData& level = reading.Level;
    reader.Section("samples");
    level.NumSamples = level.NumSampleIndices;
    if (level.NumSamples <= 0)
        return;
    level.Samples.resize(static_cast<std::size_t>(level.NumSamples));
    reader.SeekUpTo(start);
    for (Sample& sample : level.Samples) {
        const auto at = reader.Position();
        if (reader.Left() < 4 || std::memcmp(reader.Take(4).data(), "RIFF", 4) != 0)
            return;
        const auto size = reader.Read<std::int32_t>() + kRiffHeaderBytes;
        if (size <= 0)
            reader.Fail("a sample of " + std::to_string(size) + " bytes");
        reader.Seek(at);
        sample.Data = reader.TakeTable(size, 1);
        reader.SeekUpTo(reader.Position() + gap);
    }
}

} // namespace morlik
