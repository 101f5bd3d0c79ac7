#include "samples/LevelWriter.h"

#include "samples/Models.h"

#include <map>
#include <stdexcept>
#include <zlib.h>

namespace morlik::samples
{

namespace
{

/// Tomb Raider I to III: version, palettes of II and III, tiles.
void WriteOlderTiles(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Version");
    out.Put(level.FirstWord);
    const bool first = IsFirstGame(level.Game);
    if (!first) {
        out.Section("Palette");
        out.Put(level.Palette);
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

/// Tomb Raider IV and V: version, tile counts, the tiles in 32 and in 16 bits, and the two extra
/// tiles (font and sky).
void WriteTileBlocks(MarkedWriter& out, const LevelContent& level)
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

void WriteRoom(MarkedWriter& out, const RoomContent& room, const RoomLayout& layout,
               const std::string& name)
{
    const std::size_t geometry = 4 * sizeof(std::int16_t) + room.NumVertices * layout.Vertex +
                                 room.Rectangles.size() * sizeof(RoomRectangle) +
                                 room.Triangles.size() * sizeof(RoomTriangle) +
                                 room.NumOthers * kRoomSpriteBytes;
    out.Section(name);
    out.PutFiller(kRoomHeadBytes);
    out.Count<std::int32_t>(name + " geometry", geometry / 2);
    out.CountedFiller<std::int16_t>(name + " vertices", room.NumVertices, layout.Vertex);
    out.CountedTable<std::int16_t>(name + " rectangles", room.Rectangles);
    out.CountedTable<std::int16_t>(name + " triangles", room.Triangles);
    out.CountedFiller<std::int16_t>(name + " sprites", room.NumOthers, kRoomSpriteBytes);
    out.CountedFiller<std::int16_t>(name + " portals", 2 * room.NumOthers, kPortalBytes);
    out.Section(name + " sectors");
    out.Count<std::int16_t>(name + " Z sectors", room.NumZSectors);
    out.Count<std::int16_t>(name + " X sectors", room.NumXSectors);
    out.PutFiller(room.NumZSectors * room.NumXSectors * kSectorBytes);
    out.Section(name + " ambient light");
    out.PutFiller(layout.Ambient);
    out.CountedFiller<std::int16_t>(name + " lights", 3 * room.NumOthers, layout.Light);
    out.CountedFiller<std::int16_t>(name + " statics", 4 * room.NumOthers, layout.Static);
    out.Section(name + " end");
    out.PutFiller(layout.Tail);
}

/// Tomb Raider V wraps each room in a block that readers can pass over by its size.
void WriteRooms(MarkedWriter& out, const LevelContent& level)
{
    constexpr std::size_t kBlockBytes = 200;
    out.Section("Rooms");
    out.Count<std::int16_t>("Rooms", level.Rooms.size());
    if (level.Game == kTR5)
        out.Put(std::int16_t{0}); // upper half of the count
    for (std::size_t r = 0; r < level.Rooms.size(); ++r) {
        const std::string name = "Room " + std::to_string(r);
        if (level.Game == kTR5) {
            out.Section(name);
            out.PutText("XELA");
            out.Count<std::uint32_t>(name + " size", kBlockBytes);
            out.PutFiller(kBlockBytes);
        } else
            WriteRoom(out, level.Rooms[r], RoomLayoutOf(level.Game), name);
    }
}

/// The bytes of each section that isn't filler.
using Contents = std::map<std::string_view, MarkedWriter>;

/// The mesh data and the table of their offsets.
void PutMeshes(Contents& contents, const LevelContent& level)
{
    MarkedWriter& data = contents["Mesh data"];
    MarkedWriter& pointers = contents["Mesh pointers"];
    std::vector<std::int32_t> offsets;
    for (const MeshContent& mesh : level.Meshes) {
        offsets.push_back(narrow<std::int32_t>(data.Size()));
        data.PutBytes(EncodeMesh(mesh, level.Game));
        data.PutFiller(data.Size() % 4); // meshes begin at multiples of 4
    }
    for (const std::size_t mesh : level.MeshTable)
        pointers.Put(offsets.at(mesh));
}

void PutModels(Contents& contents, const LevelContent& level)
{
    MarkedWriter& animations = contents["Animations"];
    for (const Animation& animation : level.Animations) {
        if (IsOlderGame(level.Game))
            ShortAnimationFields::Write(animations, animation);
        else
            animations.Put(animation);
    }
    contents["State changes"].PutTable(level.StateChanges);
    contents["Dispatches"].PutTable(level.AnimDispatches);
    contents["Commands"].PutTable(level.AnimCommands);
    contents["Mesh trees"].PutTable(level.MeshTrees);
    contents["Frames"].PutTable(level.Frames);
    MarkedWriter& moveables = contents["Moveables"];
    for (const Moveable& moveable : level.Moveables) {
        MoveableFields::Write(moveables, moveable);
        moveables.PutFiller(level.Game == kTR5 ? 2 : 0);
    }
    contents["Static meshes"].PutTable(level.StaticMeshes);
}

/// In Tomb Raider V there are two more bytes before the size.
void PutTextures(Contents& contents, const LevelContent& level)
{
    MarkedWriter& textures = contents["Object textures"];
    textures.PutTable(level.ObjectTextures);
    for (const ObjectTextureTR45& texture : level.ObjectTexturesTR45) {
        TextureHeadFields::Write(textures, texture);
        textures.PutFiller(level.Game == kTR5 ? 10 : 8);
        TextureSizeFields::Write(textures, texture);
    }
    contents["Sprite textures"].PutTable(level.SpriteTextures);
    contents["Sprite sequences"].PutTable(level.SpriteSequences);
    contents["Palette"].Put(level.Palette);
}

/// Tomb Raider I and Gold keep the samples in the level; the indices are positions in them there.
void PutSounds(Contents& contents, const LevelContent& level)
{
    if (level.Extension)
        contents["Sound map"].PutTable(level.Extension->SoundMap);
    else
        contents["Sound map"].Put(level.SoundMap);
    contents["Sound details"].PutTable(level.SoundDetails);
    MarkedWriter& samples = contents["Sample data"];
    for (const auto& sample : level.Samples)
        samples.PutTable(sample);
    contents["Sample indices"].PutTable(level.SampleIndices);
}

/// The sections of a level: those of its game, with what is another one's.
std::vector<SectionLayout> SectionsIn(const LevelContent& level)
{
    if (level.OtherPalettePlace)
        return SectionsOf(level.Game == kTR1 ? kTR1Gold : kTR1);
    auto sections = SectionsOf(level.Game);
    if (level.Extension) {
        std::erase_if(sections, [](const auto& section) { return section.Name == "Demo data"; });
        for (SectionLayout& section : sections)
            if (section.Name == "Sound map")
                section.RecordBytes = 2 * level.Extension->SoundMap.size();
    }
    return sections;
}

/// Everything from the unused first word to the sample indices: in Tomb Raider IV the level block.
void WriteLevelData(MarkedWriter& out, const LevelContent& level)
{
    out.Section("Unused word");
    out.PutFiller(4);
    WriteRooms(out, level);
    Contents contents;
    PutMeshes(contents, level);
    PutModels(contents, level);
    PutTextures(contents, level);
    PutSounds(contents, level);
    std::size_t others = 0; // records of the last list of filler
    std::size_t boxes = 0;
    for (const auto& [name, countBytes, recordBytes] : SectionsIn(level)) {
        const auto found = contents.find(name);
        const bool isFiller = found == contents.end();
        std::size_t records = name == "Zones" ? boxes : 1;
        if (countBytes > 0)
            records = isFiller ? others += level.NumOthers : found->second.Size() / recordBytes;
        if (name == "Boxes")
            boxes = records;
        out.Section(std::string(name));
        if (level.Extension && name == "Sound map")
            out.Count<std::uint16_t>("Slots", level.Extension->NumSlots);
        if (countBytes == 2)
            out.Count<std::int16_t>(std::string(name), records);
        else if (countBytes == 4)
            out.Count<std::int32_t>(std::string(name), records);
        if (isFiller)
            out.PutFiller(records * recordBytes);
        else
            out.PutBytes(std::span(found->second.Bytes()).first(records * recordBytes));
    }
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

/// What stands at the end of a level of the extended engine of Tomb Raider IV.
void WriteExtension(MarkedWriter& out)
{
    constexpr std::size_t kDataBytes = 30;
    out.Section("Extension");
    const auto start = out.Size();
    out.PutText("NG");
    out.PutFiller(kDataBytes);
    out.PutText("NGLE");
    out.Count<std::uint32_t>("Extension", out.Size() - start + sizeof(std::uint32_t));
}

} // namespace

const RoomLayout& RoomLayoutOf(VersionCode game)
{
    if (IsFirstGame(game))
        return kRoomTR1;
    return game == kTR2 ? kRoomTR2 : game == kTR3 ? kRoomTR3 : kRoomTR4;
}

std::vector<SectionLayout> SectionsOf(VersionCode game)
{
    const bool first = IsFirstGame(game);
    const bool older = IsOlderGame(game);
    const bool fifth = game == kTR5;
    const std::size_t texture = older ? 20 : fifth ? 40 : 38;
    const auto slots = first ? kSoundMapSlotsTR1 : fifth ? kSoundMapSlots : kSoundMapSlotsTR2;
    std::vector<SectionLayout> sections;
    const auto add = [&](bool here, std::string_view name, std::size_t count, std::size_t record) {
        if (here)
            sections.push_back({name, count, record});
    };
    add(true, "Floor data", 4, 2);
    add(true, "Mesh data", 4, 2);
    add(true, "Mesh pointers", 4, 4);
    add(true, "Animations", 4, older ? 32 : 40);
    add(true, "State changes", 4, 6);
    add(true, "Dispatches", 4, 8);
    add(true, "Commands", 4, 2);
    add(true, "Mesh trees", 4, 4);
    add(true, "Frames", 4, 2);
    add(true, "Moveables", 4, fifth ? 20 : 18);
    add(true, "Static meshes", 4, 32);
    add(older && game != kTR3, "Object textures", 4, texture);
    add(!older, "Sprite marker", 0, fifth ? 4 : 3);
    add(true, "Sprite textures", 4, 16);
    add(true, "Sprite sequences", 4, 8);
    add(game == kTR1Gold, "Palette", 0, 768);
    add(true, "Cameras", 4, 16);
    add(!older, "Fly-by cameras", 4, 40);
    add(true, "Sound sources", 4, 16);
    add(true, "Boxes", 4, first ? 20 : 8);
    add(true, "Overlaps", 4, 2);
    add(true, "Zones", 0, first ? 12 : 20);
    add(true, "Animated textures", 4, 2);
    add(!older, "Texture marker", 0, fifth ? 5 : 4);
    add(!older || game == kTR3, "Object textures", 4, texture);
    add(true, "Items", 4, first ? 22 : 24);
    add(older, "Light map", 0, 8192);
    add(game == kTR1, "Palette", 0, 768);
    add(older, "Cinematic frames", 2, 16);
    add(!older, "AI objects", 4, 24);
    add(true, "Demo data", 2, 1);
    add(true, "Sound map", 0, 2 * slots);
    add(true, "Sound details", 4, 8);
    add(first, "Sample data", 4, 1);
    add(true, "Sample indices", 4, 4);
    add(!older, "Tail", 0, 6);
    return sections;
}

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
    WriteTileBlocks(out, level);
    WriteBlock(out, "Level block", levelBlock);
    if (level.Extension && !level.Extension->Places.empty())
        out.CountedTable<std::int32_t>("Samples", level.Extension->Places);
    else
        WriteSamples(out, level);
    if (level.Extension)
        WriteExtension(out);
    return std::move(out).Finish();
}

LevelFile WriteLevel(const LevelContent& level)
{
    if (level.Game == kTR4)
        return WrapTR4(level, WriteLevelBlock(level).Bytes);
    MarkedWriter out;
    if (IsOlderGame(level.Game)) {
        WriteOlderTiles(out, level);
        WriteLevelData(out, level);
        return std::move(out).Finish();
    }
    // Tomb Raider V: a short head with the level data's size, the level data, the samples.
    WriteTileBlocks(out, level);
    out.Section("Level head");
    out.Put(level.LaraType);
    out.Put(level.WeatherType);
    out.PutFiller(kHeadBytesTR5);
    const std::size_t size = WriteLevelBlock(level).Bytes.size();
    out.Count<std::uint32_t>("Level data", size);
    out.Put(narrow<std::uint32_t>(size));
    WriteLevelData(out, level);
    WriteSamples(out, level);
    return std::move(out).Finish();
}

} // namespace morlik::samples
