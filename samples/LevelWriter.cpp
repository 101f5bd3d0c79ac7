#include "samples/LevelWriter.h"

#include "samples/OlderWriter.h"
#include "samples/WriterParts.h"

#include <stdexcept>
#include <zlib.h>

namespace morlik::samples
{

namespace
{

void PutText(ByteSink& out, std::string_view text)
{
    out.PutBytes(std::as_bytes(std::span(text)));
}

/// The two sizes of a zlib block and its stream.
void WriteBlock(MarkedWriter& out, const std::string& name, std::span<const std::byte> bytes)
{
    const auto stream = Compress(bytes);
    out.Section(name);
    out.Count<std::uint32_t>(name + " inflated", bytes.size());
    out.Count<std::uint32_t>(name + " compressed", stream.size());
    out.PutTable(stream);
}

/// Version, tile counts, the tiles in 32 and in 16 bits, and the two extra tiles (font and sky).
void WriteTiles(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Version");
    out.Put(level.FirstWord);
    out.Section("Tile counts");
    out.Count<std::int16_t>("Room tiles", static_cast<std::size_t>(level.NumRoomTiles));
    out.Count<std::int16_t>("Object tiles", static_cast<std::size_t>(level.NumObjectTiles));
    out.Count<std::int16_t>("Bump tiles", static_cast<std::size_t>(level.NumBumpTiles));
    WriteBlock(out, "Tiles32", std::as_bytes(std::span(level.Tiles32)));
    WriteBlock(out, "Tiles16", std::as_bytes(std::span(level.Tiles16)));
    const std::vector<std::uint32_t> extraTiles(2 * std::size_t{kTilePixels});
    WriteBlock(out, "Extra tiles", std::as_bytes(std::span(extraTiles)));
}

/// A room from its position to its end, in the form of Tomb Raider IV.
void WriteRoomBody(MarkedWriter& out, const RoomContent& room, VersionCode game,
                   const std::string& name)
{
    constexpr std::size_t kLightBytes = 46;
    constexpr std::size_t kReverbBytes = 3;
    MarkedWriter sized; // the geometry alone, for its size in 16-bit words
    WriteGeometry(sized, room, game, name);

    out.Section(name);
    out.Put(room.X);
    out.Put(room.Z);
    out.Put(room.YBottom);
    out.Put(room.YTop);
    out.Count<std::int32_t>(name + " geometry", sized.Size() / 2);
    WriteGeometry(out, room, game, name);
    WritePortalsAndSectors(out, room, name);
    out.Section(name + " lights");
    out.Put(room.AmbientIntensity1);
    out.Put(room.AmbientIntensity2);
    out.Count<std::int16_t>(name + " lights", room.Lights.size());
    out.PutFiller(room.Lights.size() * kLightBytes);
    out.CountedTable<std::int16_t>(name + " statics", room.Statics);
    out.Section(name + " end");
    out.Put(room.AlternateRoom);
    out.Put(room.Flags);
    out.PutFiller(kReverbBytes);
}

/// Tomb Raider V wraps each room in a block that readers can pass over by its size.
void WriteRoomBlock(MarkedWriter& out, const RoomContent& room, const std::string& name)
{
    MarkedWriter body;
    WriteRoomBody(body, room, kTR5, name);
    out.Section(name);
    PutText(out, "XELA");
    out.Count<std::uint32_t>(name + " size", body.Size());
    out.PutBytes(std::move(body).Finish().Bytes);
}

void WriteRooms(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Rooms");
    if (level.Game == kTR5)
        out.Count<std::int32_t>("Rooms", level.Rooms.size());
    else
        out.Count<std::int16_t>("Rooms", level.Rooms.size());
    for (std::size_t r = 0; r < level.Rooms.size(); ++r) {
        const std::string name = "Room " + std::to_string(r);
        if (level.Game == kTR5)
            WriteRoomBlock(out, level.Rooms[r], name);
        else
            WriteRoomBody(out, level.Rooms[r], level.Game, name);
    }
    out.CountedTable<std::int32_t>("Floor data", level.FloorData);
}

/// 38 bytes in Tomb Raider IV, 40 in V: there are two more bytes before the size.
void WriteObjectTextures(MarkedWriter& out, const LevelContent& level)
{
    const std::size_t further = level.Game == kTR5 ? 10 : 8;
    out.Section("Object textures");
    out.Count<std::int32_t>("Object textures", level.ObjectTexturesTR45.size());
    for (const ObjectTextureTR45& texture : level.ObjectTexturesTR45) {
        out.Put(texture.Attribute);
        out.Put(texture.Tile);
        out.Put(texture.NewFlags);
        out.Put(texture.Corners);
        out.PutFiller(further);
        out.Put(texture.Width);
        out.Put(texture.Height);
    }
}

/// Everything from the unused first word to the sample indices: the level block of Tomb Raider IV
/// and, uncompressed, the level data of V.
void WriteLevelData(MarkedWriter& out, const LevelContent& level)
{
    constexpr std::size_t kTailBytes = 6;
    const bool fifth = level.Game == kTR5;
    out.Section("Unused word");
    out.PutFiller(4);
    WriteRooms(out, level);
    WriteModels(out, level);
    out.Section("Sprite marker");
    PutText(out, fifth ? std::string_view("SPR\0", 4) : std::string_view("SPR"));
    out.CountedTable<std::int32_t>("Sprite textures", level.SpriteTextures);
    out.CountedTable<std::int32_t>("Sprite sequences", level.SpriteSequences);
    WriteCameras(out, level);
    WriteBoxes(out, level);
    out.Section("Texture marker");
    PutText(out, fifth ? std::string_view("\0TEX\0", 5) : std::string_view("\0TEX", 4));
    WriteObjectTextures(out, level);
    WriteItems(out, level);
    out.CountedTable<std::int32_t>("AI objects", level.AIObjects);
    out.CountedTable<std::int16_t>("Demo data", level.DemoData);
    WriteSoundTables(out, level);
    out.CountedTable<std::int32_t>("Sample indices", level.SampleIndices);
    out.Section("Tail");
    out.PutFiller(kTailBytes);
}

/// Two sizes before each sample; the second is that of its bytes.
void WriteSamples(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Samples");
    out.Count<std::int32_t>("Samples", level.Samples.size());
    for (std::size_t s = 0; s < level.Samples.size(); ++s) {
        const auto& sample = level.Samples[s];
        const std::string name = "Sample " + std::to_string(s);
        out.Section(name);
        out.Put(narrow<std::int32_t>(sample.size()));
        out.Count<std::int32_t>(name, sample.size());
        out.PutTable(sample);
    }
}

/// Tomb Raider V: the tiles, a short head with the level data's size, the level data, the samples.
LevelFile WriteTR5(const LevelContent& level)
{
    constexpr std::size_t kUnusedBytes = 28;
    MarkedWriter sized; // the level data alone, for their size
    WriteLevelData(sized, level);

    MarkedWriter out;
    WriteTiles(out, level);
    out.Section("Level head");
    out.Put(level.LaraType);
    out.Put(level.WeatherType);
    out.PutFiller(kUnusedBytes);
    out.Count<std::uint32_t>("Level data", sized.Size());
    out.Put(narrow<std::uint32_t>(sized.Size()));
    WriteLevelData(out, level);
    WriteSamples(out, level);
    return std::move(out).Finish();
}

} // namespace

std::vector<std::byte> Compress(std::span<const std::byte> bytes)
{
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::vector<std::byte> stream(size);
    const int result = compress2(reinterpret_cast<Bytef*>(stream.data()), &size,
                                 reinterpret_cast<const Bytef*>(bytes.data()),
                                 static_cast<uLong>(bytes.size()), Z_BEST_SPEED);
    if (result != Z_OK)
        throw std::runtime_error("zlib refuses to compress");
    stream.resize(size);
    return stream;
}

LevelFile WriteLevelBlock(const LevelContent& level)
{
    MarkedWriter out;
    WriteLevelData(out, level);
    return std::move(out).Finish();
}

LevelFile WrapTR4(const LevelContent& level, std::span<const std::byte> levelBlock)
{
    MarkedWriter out;
    WriteTiles(out, level);
    WriteBlock(out, "Level block", levelBlock);
    WriteSamples(out, level);
    return std::move(out).Finish();
}

LevelFile WriteLevel(const LevelContent& level)
{
    switch (level.Game) {
    case kTR4:
        return WrapTR4(level, WriteLevelBlock(level).Bytes);
    case kTR5:
        return WriteTR5(level);
    default:
        return WriteOlderLevel(level);
    }
}

} // namespace morlik::samples
