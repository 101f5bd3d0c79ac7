#include "samples/WriterParts.h"

#include "base/Fields.h"
#include "samples/Models.h"

namespace morlik::samples
{

namespace
{

/// Animations of the older games have no lateral speed and acceleration.
using ShortAnimation =
    FieldList<&Animation::FrameOffset, &Animation::FrameRate, &Animation::FrameSize,
              &Animation::State, &Animation::Speed, &Animation::Accel, &Animation::FrameStart,
              &Animation::FrameEnd, &Animation::NextAnimation, &Animation::NextFrame,
              &Animation::NumStateChanges, &Animation::StateChange, &Animation::NumAnimCommands,
              &Animation::AnimCommand>;
static_assert(ShortAnimation::kBytes == 32);

using PackedMoveable = FieldList<&Moveable::ObjectID, &Moveable::NumMeshes, &Moveable::StartingMesh,
                                 &Moveable::MeshTree, &Moveable::FrameOffset, &Moveable::Animation>;
static_assert(PackedMoveable::kBytes == 18);

using ShortVertex =
    FieldList<&RoomVertex::X, &RoomVertex::Y, &RoomVertex::Z, &RoomVertex::Lighting1>;
static_assert(ShortVertex::kBytes == 8);

/// The mesh data, whose count is in 16-bit words, and the table of their offsets.
void WriteMeshes(MarkedWriter& out, const LevelContent& level)
{
    ByteWriter data;
    std::vector<std::int32_t> offsets;
    for (const MeshContent& mesh : level.Meshes) {
        offsets.push_back(narrow<std::int32_t>(data.Size()));
        data.PutBytes(EncodeMesh(mesh, level.Game));
        data.PutZeros(data.Size() % 4); // meshes begin at multiples of 4
    }
    out.Section("Mesh data");
    out.Count<std::int32_t>("Mesh data", data.Size() / 2);
    out.PutBytes(data.Bytes());

    std::vector<std::int32_t> pointers;
    for (const std::size_t mesh : level.MeshTable)
        pointers.push_back(offsets.at(mesh));
    out.CountedTable<std::int32_t>("Mesh pointers", pointers);
}

void WriteAnimations(MarkedWriter& out, const LevelContent& level)
{
    if (!IsOlderGame(level.Game)) {
        out.CountedTable<std::int32_t>("Animations", level.Animations);
        return;
    }
    out.Section("Animations");
    out.Count<std::int32_t>("Animations", level.Animations.size());
    for (const Animation& animation : level.Animations)
        ShortAnimation::Write(out, animation);
}

void WriteMoveables(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Moveables");
    out.Count<std::int32_t>("Moveables", level.Moveables.size());
    for (const Moveable& moveable : level.Moveables) {
        PackedMoveable::Write(out, moveable);
        if (level.Game == kTR5)
            out.PutFiller(2);
    }
}

} // namespace

RecordSizes SizesOf(VersionCode game)
{
    if (IsFirstGame(game))
        return {.Box = 20, .Zone = 12, .Item = 22, .SoundSlots = kSoundMapSlotsTR1};
    return {.Box = 8,
            .Zone = 20,
            .Item = 24,
            .SoundSlots = game == kTR5 ? kSoundMapSlots : kSoundMapSlotsTR2};
}

void WriteModels(MarkedWriter& out, const LevelContent& level)
{
    WriteMeshes(out, level);
    WriteAnimations(out, level);
    out.CountedTable<std::int32_t>("State changes", level.StateChanges);
    out.CountedTable<std::int32_t>("Dispatches", level.AnimDispatches);
    out.CountedTable<std::int32_t>("Commands", level.AnimCommands);
    out.CountedTable<std::int32_t>("Mesh trees", level.MeshTrees);
    out.CountedTable<std::int32_t>("Frames", level.Frames);
    WriteMoveables(out, level);
    out.CountedTable<std::int32_t>("Static meshes", level.StaticMeshes);
}

void WriteGeometry(MarkedWriter& out, const RoomContent& room, VersionCode game,
                   const std::string& name)
{
    if (IsFirstGame(game)) {
        out.Section(name + " vertices");
        out.Count<std::int16_t>(name + " vertices", room.Vertices.size());
        for (const RoomVertex& vertex : room.Vertices)
            ShortVertex::Write(out, vertex);
    } else
        out.CountedTable<std::int16_t>(name + " vertices", room.Vertices);
    out.CountedTable<std::int16_t>(name + " rectangles", room.Rectangles);
    out.CountedTable<std::int16_t>(name + " triangles", room.Triangles);
    out.CountedTable<std::int16_t>(name + " sprites", room.Sprites);
}

void WritePortalsAndSectors(MarkedWriter& out, const RoomContent& room, const std::string& name)
{
    out.CountedTable<std::int16_t>(name + " portals", room.Portals);
    out.Section(name + " sectors");
    out.Count<std::int16_t>(name + " Z sectors", static_cast<std::size_t>(room.NumZSectors));
    out.Count<std::int16_t>(name + " X sectors", static_cast<std::size_t>(room.NumXSectors));
    out.PutTable(room.Sectors);
}

void WriteCameras(MarkedWriter& out, const LevelContent& level)
{
    out.CountedTable<std::int32_t>("Cameras", level.Cameras);
    if (!IsOlderGame(level.Game))
        out.CountedTable<std::int32_t>("Fly-by cameras", level.FlybyCameras);
    out.CountedTable<std::int32_t>("Sound sources", level.SoundSources);
}

void WriteBoxes(MarkedWriter& out, const LevelContent& level)
{
    const RecordSizes sizes = SizesOf(level.Game);
    out.Section("Boxes");
    out.Count<std::int32_t>("Boxes", level.NumBoxes);
    out.PutFiller(level.NumBoxes * sizes.Box);
    out.CountedTable<std::int32_t>("Overlaps", level.Overlaps);
    out.Section("Zones"); // as many as boxes, without a count of their own
    out.PutFiller(level.NumBoxes * sizes.Zone);
    out.CountedTable<std::int32_t>("Animated textures", level.AnimatedTextures);
}

void WriteItems(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Items");
    out.Count<std::int32_t>("Items", level.NumItems);
    out.PutFiller(level.NumItems * SizesOf(level.Game).Item);
}

void WriteSoundTables(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Sound map");
    const auto slots = std::span(level.SoundMap).first(SizesOf(level.Game).SoundSlots);
    out.PutBytes(std::as_bytes(slots));
    out.CountedTable<std::int32_t>("Sound details", level.SoundDetails);
}

} // namespace morlik::samples
