// Level files of Tomb Raider IV: three blocks of tiles, the level block with all that the older
// games have in the file itself, and the samples.

#include "level/Compressed.h"
#include "level/Extension.h"
#include "level/Readers.h"
#include "level/RoomLayout.h"

namespace morlik
{

namespace
{

constexpr ObjectLayout kLayout{.WideAnimations = true,
                               .MoveableTail = 0,
                               .Meshes = CountRule::Positive,
                               .Changes = CountRule::Positive,
                               .Statics = CountRule::ZeroIsEmpty,
                               .Sounds = CountRule::ZeroIsEmpty,
                               .SoundMapSlots = kSoundMapSlotsTR2};

constexpr std::array<TextureRecordLayout, 1> kTextureLayouts{{{8, 0}}};

std::shared_ptr<const UninitialisedVector<std::byte>> InflateLevelBlock(ByteReader& reader,
                                                                        PhaseTimes& times)
{
    reader.Section("level block");
    BlockSizes sizes{};
    const auto stream = TakeBlock(reader, sizes);
    auto block =
        std::make_shared<UninitialisedVector<std::byte>>(static_cast<std::size_t>(sizes.Inflated));
    Inflate(stream, *block, times);
    return block;
}

/// Samples: an unused word, the size, the data.
void ReadSamples(LevelReading& reading, bool isExtended)
{
    constexpr std::size_t kSampleHeadBytes = 8;
    ByteReader& reader = reading.Reader;
    LevelData& level = reading.Level;
    reader.Section("samples");
    const auto count = ReadCount(reader, CountRule::ZeroIsEmpty);
    if (static_cast<std::size_t>(count) > reader.Left() / kSampleHeadBytes)
        reader.Fail("a count of " + std::to_string(count));
    if (isExtended && HasSamplePlaces(reader, count)) {
        level.SamplePlaces = reader.Table<SamplePlace>(count);
        return;
    }
    level.NumSamples = count;
    level.Samples.resize(static_cast<std::size_t>(count));
    for (Sample& sample : level.Samples) {
        reader.Skip(4);
        const auto size = reader.Read<std::int32_t>();
        if (size <= 0)
            continue;
        sample.Data = reader.TakeTable(size, 1);
    }
}

/// Nothing of a room is needed but its length.
void SkipRoom(ByteReader& reader)
{
    reader.Skip(kRoomHeadBytes);
    reader.SkipTable(reader.Read<std::int32_t>(), 2); // geometry, in 16-bit words
    reader.SkipTable(reader.Read<std::int16_t>(), kPortalBytes);
    const auto zSectors = reader.Read<std::int16_t>();
    const auto xSectors = reader.Read<std::int16_t>();
    if (zSectors < 0 || xSectors < 0)
        reader.Fail("a negative count of sectors");
    reader.SkipTable(std::int64_t{zSectors} * xSectors, kSectorBytes);
    reader.Skip(kRoomTR4.Ambient);
    reader.SkipTable(reader.Read<std::int16_t>(), kRoomTR4.Light);
    reader.SkipTable(reader.Read<std::int16_t>(), kRoomTR4.Static);
    reader.Skip(kRoomTR4.Tail);
}

void SkipRooms(LevelReading& reading)
{
    ByteReader& reader = reading.Reader;
    reader.Section("rooms");
    reader.Skip(4);
    const auto count = reader.Read<std::int16_t>();
    if (count < 0)
        reader.Fail("a count of " + std::to_string(count));
    reading.State.RoomCount = count;
    for (std::int16_t i = 0; i < count; ++i)
        SkipRoom(reader);
    SkipTable(reader, "floor data", 2);
}

void ReadLevelBlock(LevelReading& reading, bool isExtended)
{
    SkipRooms(reading);
    ReadObjects(reading, kLayout);
    reading.Reader.Section("sprite mark");
    reading.Reader.Skip(3);
    SkipScenery(reading.Reader);
    reading.Reader.Skip(4); // mark of the object textures
    ReadObjectTexturesTR45(reading, kTextureLayouts);
    SkipItemsTR45(reading.Reader);
    if (isExtended) {
        ReadExtendedSoundMap(reading);
        ReadSoundDetails(reading, kLayout);
    } else {
        SkipShortTable(reading.Reader, "demo data", 1);
        ReadSoundMap(reading, kLayout);
    }
    ReadSampleIndices(reading, kLayout);
}

} // namespace

void ReadTR4(LevelReading& reading)
{
    ByteReader rest = reading.Reader;
    const bool isExtended = IsExtended(rest.Take(rest.Left()));
    ReadTileBlocks(reading);
    reading.Level.LevelGeometry = InflateLevelBlock(reading.Reader, reading.Report.Times);
    ReadSamples(reading, isExtended);
    ByteReader blockReader(*reading.Level.LevelGeometry);
    LevelReading blockReading{blockReader, reading.Level, reading.State, reading.Report};
    ReadLevelBlock(blockReading, isExtended);
}

} // namespace morlik
