#include "samples/Project.h"

#include "side/PRJ_Mod.h"
#include "tests/support/Conversion.h"

namespace morlik::test
{

constexpr const char* kReadError = "MORLIK: ReadPRJ -> Error reading PRJ file!";

class ProjectTest : public testing::Test
{
protected:
    PRJData Read(std::span<const std::byte> bytes)
    {
        const auto name = Folder.File("city.prj");
        WriteWholeFile(name, bytes);
        Host = {};
        LevelIsLoaded = -1;
        return ReadPRJ(name, LevelIsLoaded, Report);
    }
    PRJData Read(const samples::ProjectContent& project)
    {
        return Read(samples::WriteProject(project).Bytes);
    }

    TempFolder Folder;
    ScriptedHost Host;
    Reporter Report{Host};
    std::int16_t LevelIsLoaded = 0;
};

TEST_F(ProjectTest, ReadsRoomsAndObjectsToTheEnd)
{
    auto content = samples::MakeProject();
    content.Rooms[3].SlotWord = 2; // only 1 marks an empty slot
    const PRJData project = Read(content);
    EXPECT_TRUE(Host.Calls.empty());
    EXPECT_EQ(LevelIsLoaded, 0);
    ASSERT_EQ(project.Rooms.size(), 4U);
    const std::array<std::int16_t, 4> states{-1, 0, -1, -1};
    const std::array<std::int16_t, 4> indices{0, 0, 1, 2};
    for (std::size_t i = 0; i < states.size(); ++i) {
        EXPECT_EQ(project.Rooms[i].State, states[i]);
        EXPECT_EQ(project.Rooms[i].Index, indices[i]);
        EXPECT_TRUE(project.Rooms[i].Name.starts_with(content.Rooms[i].Name));
        EXPECT_EQ(project.Rooms[i].ObjectTypes, content.Rooms[i].Objects);
        EXPECT_EQ(project.Rooms[i].Object2Types, content.Rooms[i].SecondObjects);
    }
    EXPECT_EQ(project.NumTrailRecords, 3);
}

TEST_F(ProjectTest, ReadsTheFormOfLaterEditors)
{
    auto content = samples::MakeProject();
    content.Later = true;
    content.Rooms[2].SecondObjects = {0x4000, samples::kLaterSecondObject};
    const PRJData project = Read(content);
    EXPECT_TRUE(Host.Calls.empty());
    EXPECT_EQ(project.NumRooms, 3);
    EXPECT_TRUE(project.Rooms[3].Name.starts_with("Cellar"));
    EXPECT_EQ(project.Rooms[2].Object2Types, content.Rooms[2].SecondObjects);
    EXPECT_EQ(project.TextureFile, "C:\\TEXTURES.TGA");

    // A file that can't be read to its end in either form is taken for what its version names.
    content.Rooms[3].Objects = {9};
    EXPECT_TRUE(Read(content).Rooms.empty());
    EXPECT_EQ(Host.Messages().back(), kReadError);
    for (const std::int32_t version : {49, 50}) {
        content.Version = version;
        EXPECT_EQ(Read(content).NumRooms, 3);
        EXPECT_EQ(Host.Messages(), Strings{"MORLIK: Unknown object found -9"});
    }
}

TEST_F(ProjectTest, UnknownObjectsGetAMessageAndTheReadGoesOn)
{
    auto content = samples::MakeProject();
    content.Rooms[0].Objects = {samples::kPlainObject, 9, samples::kLongObject};
    content.Rooms[0].SecondObjects = {0x4c00, 0x4001, samples::kLaterSecondObject, 0x4000};
    content.Rooms[2].Objects = {-1};
    const PRJData project = Read(content);
    EXPECT_EQ(Host.Calls, (Strings{"message: MORLIK: Unknown object found -9",
                                   "message: MORLIK: Unknown object2 -16385",
                                   "message: MORLIK: Unknown object2 -18432",
                                   "message: MORLIK: Unknown object found --1"}));
    EXPECT_EQ(project.NumRooms, 3);
    EXPECT_EQ(project.TextureFile, "C:\\TEXTURES.TGA");

    for (const std::size_t more : {16U, 17U}) { // 20 of them, and one too many
        content.Rooms[3].SecondObjects.assign(more, 1);
        EXPECT_EQ(Read(content).NumRooms, more == 16 ? 3 : 0);
        EXPECT_EQ(Host.Messages().size(), more == 16 ? 20U : 21U);
        EXPECT_EQ(Host.Messages().back() == kReadError, more == 17);
    }
}

TEST_F(ProjectTest, FilesCutAnywhereOrOfAnotherKindFailWithTheirMessage)
{
    auto other = samples::MakeProject();
    other.Magic = "PROJFILM";
    EXPECT_EQ(Read(other).NumRoomSlots, 0);
    EXPECT_EQ(Host.Calls, Strings{"message: MORLIK: Not a project file!"});
    EXPECT_EQ(LevelIsLoaded, -1);
    for (const std::int32_t version : {1, 49, 50}) {
        auto content = samples::MakeProject();
        content.Version = version;
        content.Later = version != 1;
        const auto bytes = samples::WriteProject(content).Bytes;
        for (std::size_t size = 0; size < bytes.size(); size += size < 2000 ? 1 : 97) {
            const PRJData project = Read(std::span(bytes).first(size));
            const bool hasMagic = size >= 8;
            ASSERT_EQ(Host.Messages(),
                      Strings{hasMagic ? kReadError : "MORLIK: Not a project file!"})
                << size << " bytes of version " << version;
            ASSERT_EQ(LevelIsLoaded, hasMagic ? 0 : -1);
            ASSERT_TRUE(project.Rooms.empty() && project.NumRoomSlots == 0);
        }
    }
}

TEST_F(ProjectTest, DamagedCountsFailOrStandForNothing)
{
    // The filler behind a room's list reads as garbage, so a list that is emptied must be one that
    // was empty before.
    const std::vector<std::tuple<const char*, std::int64_t, bool>> cases{
        {"Rooms", 0, false},
        {"Rooms", -1, false},
        {"Rooms", 0x7fffffff, false},
        {"Room 2 columns", -3, false},
        {"Room 2 rows", -5, false},
        {"Room 0 items", 0x7fff, false},
        {"Room 2 items", -1, true},
        {"Room 2 objects", -7, true},
        {"Room 3 second objects", -32768, true},
        {"Trail", -1, true},
        {"Trail", 4, false},
    };
    const auto good = samples::WriteProject(samples::MakeProject());
    for (const auto& [count, value, isGood] : cases) {
        auto file = good;
        file.SetCount(count, value);
        const PRJData project = Read(file.Bytes);
        EXPECT_EQ(project.NumRooms, isGood ? 3 : 0) << count << " " << value;
        EXPECT_EQ(Host.Messages(), isGood ? Strings{} : Strings{kReadError})
            << count << " " << value;
    }
    using Section = std::pair<const char*, const char*>; // of the sample, and as the log calls it
    for (const auto& [mark, section] :
         {Section{"Rooms", "room slots"}, Section{"Room 0", "room"},
          Section{"Room 0 objects", "objects"}, Section{"Room 2 second objects", "second objects"},
          Section{"Room 0 blocks", "blocks"}, Section{"Tables", "tables"},
          Section{"Texture file", "texture file"}, Section{"Trail", "trail records"}}) {
        Report.Log.Open(Folder.File("log"));
        Read(std::span(good.Bytes).first(good.Section(mark).Offset + 3));
        EXPECT_TRUE(
            LinesOfFile(Folder.File("log")).at(0).starts_with(section + std::string(", of")));
    }
    auto flat = samples::MakeProject();
    flat.Rooms[2].BlockColumns = 0;
    EXPECT_EQ(Read(flat).NumRooms, 3);

    auto twice = good; // the product of both is that of the good file
    twice.SetCount("Room 2 columns", -3);
    twice.SetCount("Room 2 rows", -5);
    EXPECT_EQ(Read(twice.Bytes).NumRooms, 0);
}

} // namespace morlik::test
