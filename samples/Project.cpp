#include "samples/Project.h"

#include <algorithm>

namespace morlik::samples
{

namespace
{

constexpr std::int16_t kEmptySlot = 1;
constexpr std::size_t kIndexBytes = 2; ///< lists tell the indices of their entries first

/// Bytes of a second object behind its type word.
std::size_t SecondBodyBytes(std::int16_t type, bool later)
{
    constexpr std::size_t kLongTypes = 6;
    const auto* const found = std::ranges::find(kSecondObjectTypes, type);
    if (found == kSecondObjectTypes.end())
        return later && type == kLaterSecondObject ? 40 : 0;
    return found < kSecondObjectTypes.begin() + kLongTypes ? 70 : 40;
}

void WriteObjects(MarkedWriter& out, const ProjectRoom& room, const std::string& name, bool later)
{
    const std::size_t objectBytes = later ? 40 : 32; // behind the type word
    constexpr std::size_t kLongExtra = 10;
    out.CountedFiller<std::int16_t>(name + " objects", room.Objects.size(), kIndexBytes);
    for (const std::int16_t type : room.Objects) {
        out.Put(type);
        out.PutFiller(type == kLongObject ? objectBytes + kLongExtra : objectBytes);
    }
    out.PutFiller(4);
    out.CountedFiller<std::int16_t>(name + " second objects", room.SecondObjects.size(),
                                    kIndexBytes);
    for (const std::int16_t type : room.SecondObjects) {
        out.Put(type);
        out.PutFiller(SecondBodyBytes(type, later));
    }
}

void WriteRoom(MarkedWriter& out, const ProjectRoom& room, const std::string& name, bool later)
{
    constexpr std::size_t kNameBytes = 80;
    constexpr std::size_t kItemBytes = 42;
    constexpr std::size_t kBlocksHeadBytes = 9; // two words, three bytes, a word
    out.Section(name);
    out.Put(room.SlotWord);
    if (room.SlotWord == kEmptySlot)
        return;
    std::string padded = room.Name;
    padded.resize(kNameBytes);
    out.PutText(padded);
    out.PutFiller(12 + 6 + 4);
    out.Count<std::int16_t>(name + " columns", static_cast<std::size_t>(room.BlockColumns));
    out.Count<std::int16_t>(name + " rows", static_cast<std::size_t>(room.BlockRows));
    out.PutFiller(6);
    out.CountedFiller<std::int16_t>(name + " items", room.NumItems, kIndexBytes);
    out.PutFiller(kItemBytes * room.NumItems);
    WriteObjects(out, room, name, later);
    out.Section(name + " blocks");
    out.PutFiller(kBlocksHeadBytes);
    out.PutFiller((later ? 140 : 148) * static_cast<std::size_t>(room.BlockColumns) *
                  static_cast<std::size_t>(room.BlockRows));
}

/// Tables behind the rooms, the name of the texture file and the trail.
void WriteTail(MarkedWriter& out, const ProjectContent& project)
{
    constexpr std::size_t kTableBytes = 4 + 4 + 8000 + 4 + 3072 + 4 + 2048;
    constexpr std::size_t kTrailBytes = 8;
    out.Section("Tables");
    out.PutFiller(kTableBytes);
    out.Section("Texture file");
    out.PutText(project.TextureFile + " ");
    out.Section("Trail");
    out.Count<std::int16_t>("Trail", project.NumTrailRecords);
    out.PutFiller(kTrailBytes * project.NumTrailRecords);
}

} // namespace

ProjectContent MakeProject()
{
    return {.Rooms = {{.Name = "Courtyard",
                       .NumItems = 2,
                       .Objects = {kPlainObject, kLongObject, kPlainObject},
                       .SecondObjects = {kSecondObjectTypes.begin(), kSecondObjectTypes.end()}},
                      {.SlotWord = kEmptySlot},
                      {.Name = "Mill",
                       .BlockColumns = 3,
                       .BlockRows = 5,
                       .SecondObjects = {kSecondObjectTypes.back()}},
                      {.SlotWord = -1, .Name = "Cellar", .NumItems = 1}},
            .TextureFile = "C:\\TEXTURES.TGA",
            .NumTrailRecords = 3};
}

LevelFile WriteProject(const ProjectContent& project)
{
    MarkedWriter out;
    out.Section("Magic");
    out.PutText(project.Magic);
    out.Put(project.Version);
    out.Section("Rooms");
    out.Count<std::int32_t>("Rooms", project.Rooms.size());
    for (std::size_t r = 0; r < project.Rooms.size(); ++r)
        WriteRoom(out, project.Rooms[r], "Room " + std::to_string(r), project.Later);
    WriteTail(out, project);
    return std::move(out).Finish();
}

} // namespace morlik::samples
