// Level files of Tomb Raider I, I Gold, II and III: one section behind the other, without a table
// of contents, so that sections that nothing needs are walked over count by count.

#include "base/Narrow.h"
#include "level/ConvertFractional.h"
#include "level/ConvertTextInfo.h"
#include "level/Readers.h"
#include "level/RoomLayout.h"
#include "level/TextureForm.h"

namespace morlik
{

namespace
{

constexpr ObjectLayout OlderObjects(std::size_t soundMapSlots)
{
    return {.WideAnimations = false,
            .MoveableTail = 0,
            .Meshes = CountRule::ZeroIsEmpty,
            .Changes = CountRule::ZeroOrLessIsEmpty,
            .Statics = CountRule::ZeroOrLessIsEmpty,
            .Sounds = CountRule::ZeroOrLessIsEmpty,
            .SoundMapSlots = soundMapSlots};
}

constexpr std::size_t kLightMapBytes = 8192;

void ReadPalette(LevelReading& reading)
{
    reading.Reader.Section("palette");
    reading.Level.Palette = reading.Reader.Read<decltype(reading.Level.Palette)>();
}

/// Tile count and 8-bit tiles, which only Tomb Raider I keeps.
std::span<const std::byte> TakeTiles8(LevelReading& reading)
{
    reading.Reader.Section("tiles");
    reading.State.NumTiles = ReadCount(reading.Reader, CountRule::Positive);
    const auto pixels = reading.Reader.TakeTable(reading.State.NumTiles, kTilePixels);
    reading.Level.TileBytes =
        narrow<std::int32_t>(std::int64_t{reading.State.NumTiles} * kTileBytes);
    return pixels;
}

void ReadTiles8(LevelReading& reading)
{
    const auto pixels = TakeTiles8(reading);
    reading.Level.Tiles8 = {reinterpret_cast<const std::uint8_t*>(pixels.data()), pixels.size()};
}

/// Both palettes and the 16-bit tiles of Tomb Raider II and III.
void ReadTiles16(LevelReading& reading)
{
    ReadPalette(reading);
    reading.Level.Palette16 = reading.Reader.Read<decltype(reading.Level.Palette16)>();
    TakeTiles8(reading);
    // All that stands before has an even size, so the words are where words may be.
    const auto pixels =
        reading.Reader.TakeTable(reading.State.NumTiles, std::size_t{2} * kTilePixels);
    reading.Level.Tiles16 = {reinterpret_cast<const std::uint16_t*>(pixels.data()),
                             pixels.size() / 2};
}

Room ReadRoom(ByteReader& reader, const RoomLayout& layout)
{
    Room room;
    reader.Skip(kRoomHeadBytes + sizeof(std::int32_t)); // and the size of the geometry
    reader.SkipTable(reader.Read<std::int16_t>(), layout.Vertex);
    room.Rectangles = reader.Table<RoomRectangle>(reader.Read<std::int16_t>());
    room.Triangles = reader.Table<RoomTriangle>(reader.Read<std::int16_t>());
    reader.SkipTable(reader.Read<std::int16_t>(), kRoomSpriteBytes);
    reader.SkipTable(reader.Read<std::int16_t>(), kPortalBytes);
    const auto zSectors = reader.Read<std::int16_t>();
    const auto xSectors = reader.Read<std::int16_t>();
    if (zSectors <= 0 || xSectors <= 0)
        reader.Fail("a room without sectors");
    reader.SkipTable(std::int64_t{zSectors} * xSectors, kSectorBytes);
    reader.Skip(layout.Ambient);
    reader.SkipTable(reader.Read<std::int16_t>(), layout.Light);
    reader.SkipTable(reader.Read<std::int16_t>(), layout.Static);
    reader.Skip(layout.Tail);
    return room;
}

/// An unused word, the rooms, and the floor data, which nothing needs.
void ReadRooms(LevelReading& reading, const RoomLayout& layout)
{
    ByteReader& reader = reading.Reader;
    reader.Section("rooms");
    reader.Skip(4);
    const auto count = reader.Read<std::int16_t>();
    if (count <= 0)
        reader.Fail("a count of " + std::to_string(count));
    reading.State.RoomCount = count;
    for (std::int16_t i = 0; i < count; ++i)
        reading.Level.Rooms.push_back(ReadRoom(reader, layout));
    SkipTable(reader, "floor data", 2);
}

void ReadObjectTextures(LevelReading& reading, const char* logLine)
{
    LevelData& level = reading.Level;
    ReadTable(reading.Reader, "object textures", CountRule::Positive, level.NumTextInfo,
              reading.State.ObjectTextures);
    TakeForm(FormOf(reading.State.ObjectTextures), level, reading.Report);
    reading.Report.LogLine(logLine);
    if (level.HasFractions)
        ConvertFractional(level, reading.State, reading.Report);
    else
        ConvertTextInfo(level, reading.State, reading.Report);
}

void ReadSprites(LevelReading& reading)
{
    LevelData& level = reading.Level;
    ReadTable(reading.Reader, "sprite textures", CountRule::ZeroOrLessIsEmpty,
              level.NumSpriteTextures, level.SpriteTextures);
    ReadTable(reading.Reader, "sprite sequences", CountRule::ZeroOrLessIsEmpty,
              level.NumSpriteSequences, level.SpriteSequences);
}

void SkipCameras(ByteReader& reader)
{
    SkipTable(reader, "cameras", 16);
    SkipTable(reader, "sound sources", 16);
}

void SkipItems(ByteReader& reader, std::size_t itemBytes)
{
    SkipTable(reader, "items", itemBytes);
    reader.Section("light map");
    reader.Skip(kLightMapBytes);
}

void SkipCinematics(ByteReader& reader)
{
    SkipShortTable(reader, "cinematic frames", 16);
    SkipShortTable(reader, "demo data", 1);
}

} // namespace

void ReadTR1(LevelReading& reading, bool hasOtherPalette)
{
    constexpr ObjectLayout kLayout = OlderObjects(kSoundMapSlotsTR1);
    const bool behindSprites = (reading.State.LevelVersion == kTR1Gold) != hasOtherPalette;
    ByteReader& reader = reading.Reader;
    ReadTiles8(reading);
    ReadRooms(reading, kRoomTR1);
    ReadObjects(reading, kLayout);
    ReadObjectTextures(reading, "-Converting Textures");
    ReadSprites(reading);
    if (behindSprites)
        ReadPalette(reading);
    SkipCameras(reader);
    SkipBoxes(reader, 20, 12);
    SkipTable(reader, "animated textures", 2);
    SkipItems(reader, 22);
    if (!behindSprites)
        ReadPalette(reading);
    SkipCinematics(reader);
    ReadSoundMap(reading, kLayout);
    reader.Section("sample data");
    const auto size = reader.Read<std::int32_t>();
    const auto start = reader.Position();
    reader.SkipTable(size, 1);
    ReadSampleIndices(reading, kLayout);
    ReadRiffSamples(reading, start, 0);
}

void ReadTR2(LevelReading& reading)
{
    constexpr ObjectLayout kLayout = OlderObjects(kSoundMapSlotsTR2);
    ByteReader& reader = reading.Reader;
    ReadTiles16(reading);
    ReadRooms(reading, kRoomTR2);
    ReadObjects(reading, kLayout);
    ReadObjectTextures(reading, "-Converting Textures");
    ReadSprites(reading);
    SkipCameras(reader);
    SkipBoxes(reader, 8, 20);
    SkipTable(reader, "animated textures", 2);
    SkipItems(reader, 24);
    SkipCinematics(reader);
    ReadSoundMap(reading, kLayout);
    ReadSampleIndices(reading, kLayout);
}

void ReadTR3(LevelReading& reading)
{
    constexpr ObjectLayout kLayout = OlderObjects(kSoundMapSlotsTR2);
    ByteReader& reader = reading.Reader;
    ReadTiles16(reading);
    ReadRooms(reading, kRoomTR3);
    ReadObjects(reading, kLayout);
    ReadSprites(reading);
    SkipCameras(reader);
    SkipBoxes(reader, 8, 20);
    SkipTable(reader, "animated textures", 2);
    ReadObjectTextures(reading, "-Converting textures"); // small, in this game alone
    SkipItems(reader, 24);
    SkipCinematics(reader);
    ReadSoundMap(reading, kLayout);
    ReadSampleIndices(reading, kLayout);
}

} // namespace morlik
