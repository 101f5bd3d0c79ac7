#include "samples/OlderWriter.h"

#include "base/Fields.h"
#include "samples/WriterParts.h"

namespace morlik::samples
{

namespace
{

using ShortLight = FieldList<&RoomLight::X, &RoomLight::Y, &RoomLight::Z, &RoomLight::Intensity1,
                             &RoomLight::Fade1>;
static_assert(ShortLight::kBytes == 18);

using ShortStatic = FieldList<&RoomStatic::X, &RoomStatic::Y, &RoomStatic::Z, &RoomStatic::Rotation,
                              &RoomStatic::Intensity1, &RoomStatic::ObjectID>;
static_assert(ShortStatic::kBytes == 18);

void WritePalette(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Palette");
    out.Put(level.Palette);
}

/// Version, palettes of II and III, tiles.
void WriteHead(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Version");
    out.Put(level.FirstWord);
    const bool first = IsFirstGame(level.Game);
    if (!first) {
        WritePalette(out, level);
        out.Section("Palette16");
        out.Put(level.Palette16);
    }
    out.Section("Tiles8");
    out.Count<std::int32_t>("Tiles", level.Tiles8.size() / kTilePixels);
    out.PutTable(level.Tiles8);
    if (!first) {
        out.Section("Tiles16");
        out.PutTable(level.Tiles16);
    }
    out.Section("Unused word");
    out.PutFiller(4);
}

void WriteRoomLights(MarkedWriter& out, const RoomContent& room, VersionCode game,
                     const std::string& name)
{
    out.Section(name + " lights");
    out.Put(room.AmbientIntensity1);
    if (!IsFirstGame(game))
        out.Put(room.AmbientIntensity2);
    if (game == kTR2)
        out.Put(room.LightMode);
    out.Count<std::int16_t>(name + " lights", room.Lights.size());
    for (const RoomLight& light : room.Lights) {
        if (IsFirstGame(game))
            ShortLight::Write(out, light);
        else
            out.Put(light);
    }
}

void WriteRoomStatics(MarkedWriter& out, const RoomContent& room, VersionCode game,
                      const std::string& name)
{
    out.Section(name + " statics");
    out.Count<std::int16_t>(name + " statics", room.Statics.size());
    for (const RoomStatic& roomStatic : room.Statics) {
        if (IsFirstGame(game))
            ShortStatic::Write(out, roomStatic);
        else
            out.Put(roomStatic);
    }
}

void WriteRoom(MarkedWriter& out, const RoomContent& room, VersionCode game,
               const std::string& name)
{
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
    WriteRoomLights(out, room, game, name);
    WriteRoomStatics(out, room, game, name);
    out.Section(name + " end");
    out.Put(room.AlternateRoom);
    out.Put(room.Flags);
    if (game == kTR3)
        out.Put(room.Extra);
}

void WriteRooms(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Rooms");
    out.Count<std::int16_t>("Rooms", level.Rooms.size());
    for (std::size_t r = 0; r < level.Rooms.size(); ++r)
        WriteRoom(out, level.Rooms[r], level.Game, "Room " + std::to_string(r));
    out.CountedTable<std::int32_t>("Floor data", level.FloorData);
}

void WriteObjectTextures(MarkedWriter& out, const LevelContent& level)
{
    out.CountedTable<std::int32_t>("Object textures", level.ObjectTextures);
}

/// Tomb Raider I and Gold keep the samples in the level, between the sound details and the
/// indices, which are positions in this block there.
void WriteSampleData(MarkedWriter& out, const LevelContent& level)
{
    ByteWriter data;
    for (const auto& sample : level.Samples)
        data.PutTable(sample);
    out.Section("Sample data");
    out.Count<std::int32_t>("Sample data", data.Size());
    out.PutBytes(data.Bytes());
}

/// From the items to the demo data.
void WriteScene(MarkedWriter& out, const LevelContent& level)
{
    constexpr std::size_t kLightMapBytes = 8192;
    WriteItems(out, level);
    out.Section("Light map");
    out.PutFiller(kLightMapBytes);
    if (level.Game == kTR1)
        WritePalette(out, level);
    out.CountedTable<std::int16_t>("Cinematic frames", level.CinematicFrames);
    out.CountedTable<std::int16_t>("Demo data", level.DemoData);
}

} // namespace

LevelFile WriteOlderLevel(const LevelContent& level)
{
    MarkedWriter out;
    WriteHead(out, level);
    WriteRooms(out, level);
    WriteModels(out, level);
    if (level.Game != kTR3)
        WriteObjectTextures(out, level);
    out.CountedTable<std::int32_t>("Sprite textures", level.SpriteTextures);
    out.CountedTable<std::int32_t>("Sprite sequences", level.SpriteSequences);
    if (level.Game == kTR1Gold)
        WritePalette(out, level);
    WriteCameras(out, level);
    WriteBoxes(out, level);
    if (level.Game == kTR3)
        WriteObjectTextures(out, level);
    WriteScene(out, level);
    WriteSoundTables(out, level);
    if (IsFirstGame(level.Game))
        WriteSampleData(out, level);
    out.CountedTable<std::int32_t>("Sample indices", level.SampleIndices);
    return std::move(out).Finish();
}

} // namespace morlik::samples
