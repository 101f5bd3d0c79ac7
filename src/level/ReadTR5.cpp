// Level files of Tomb Raider V: the tile blocks of Tomb Raider IV, then the level data, not
// compressed, and the samples at a place that the size of the level data tells.

#include "base/Narrow.h"
#include "level/Compressed.h"
#include "level/Readers.h"

namespace morlik
{

namespace
{

constexpr ObjectLayout kLayout{.WideAnimations = true,
                               .MoveableTail = 2,
                               .Meshes = CountRule::Positive,
                               .Changes = CountRule::Positive,
                               .Statics = CountRule::ZeroIsEmpty,
                               .Sounds = CountRule::ZeroOrLessIsEmpty,
                               .SoundMapSlots = kSoundMapSlots};

/// Newer level compilers put the sizes where Tomb Raider IV has them.
constexpr std::array<TextureRecordLayout, 2> kTextureLayouts{{{10, 0}, {8, 2}}};

/// Behind each sample stand the two size words of the next one.
constexpr std::size_t kSampleGap = 8;

/// Lara and weather words; gives the offset of the first sample, 20 bytes behind the word that
/// holds the size of the level data, and that size further.
std::size_t ReadHead(LevelReading& reading)
{
    ByteReader& reader = reading.Reader;
    reader.Section("level head");
    reading.Level.LaraType = reader.Read<std::int16_t>();
    reading.Level.WeatherType = reader.Read<std::int16_t>();
    reader.Skip(28);
    const auto sizeAt = static_cast<std::int64_t>(reader.Position());
    const auto samplesAt = sizeAt + reader.Read<std::int32_t>() + 20;
    reader.Skip(8);
    return narrow<std::size_t>(samplesAt);
}

/// Each room is a mark, a size and as many bytes.
void SkipRooms(LevelReading& reading)
{
    ByteReader& reader = reading.Reader;
    reader.Section("rooms");
    const auto count = reader.Read<std::int16_t>();
    if (count < 0)
        reader.Fail("a count of " + std::to_string(count));
    reading.State.RoomCount = count;
    reader.Skip(2); // upper half of the count
    for (std::int16_t i = 0; i < count; ++i) {
        reader.Skip(4);
        reader.SkipTable(reader.Read<std::int32_t>(), 1);
    }
    SkipTable(reader, "floor data", 2);
}

/// The catalogue has ten more static meshes in front of those that this game counts from 50 on: the
/// IDs are brought to it here, so that the object list shows their names.
void RenumberStatics(LevelData& level)
{
    for (StaticMesh& mesh : level.StaticMeshes)
        if (mesh.ObjectID > 49)
            mesh.ObjectID = narrow<std::int32_t>(std::int64_t{mesh.ObjectID} + 10);
}

} // namespace

void ReadTR5(LevelReading& reading)
{
    ByteReader& reader = reading.Reader;
    ReadTileBlocks(reading);
    const auto samplesAt = ReadHead(reading);
    SkipRooms(reading);
    ReadObjects(reading, kLayout);
    RenumberStatics(reading.Level);
    reader.Section("sprite mark");
    reader.Skip(4);
    SkipScenery(reader);
    reader.Skip(5); // mark of the object textures
    ReadObjectTexturesTR45(reading, kTextureLayouts);
    SkipItemsTR45(reader);
    SkipShortTable(reader, "demo data", 1);
    ReadSoundMap(reading, kLayout);
    ReadSampleIndices(reading, kLayout);
    ReadRiffSamples(reading, samplesAt, kSampleGap);
    reading.State.LevelVersion = kTR5;
}

} // namespace morlik
