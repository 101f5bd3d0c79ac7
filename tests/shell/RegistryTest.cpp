#include "shell/Register_Mod.h"
#include "shell/Settings_Mod.h"
#include "tests/support/MemoryRegistry.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

constexpr RootKey kMachine = 0x80000002;
constexpr const char* kFolders = "SOFTWARE\\torvand\\SORBLING"; // another case on purpose

class RegistryTest : public testing::Test
{
protected:
    std::optional<RegistryValue> Folder(const std::string& name)
    {
        return Store.QueryValue(kMachine, kFolders, name);
    }

    ScriptedHost Host;
    Reporter Report{Host};
    MemoryRegistry Store;
};

} // namespace

TEST_F(RegistryTest, SplitsAKeyIntoItsRootAndThePathBelow)
{
    struct Case
    {
        std::string Key;
        RootKey Root;
        std::string Rest;
        bool HasMessage;
    };
    constexpr RootKey kBefore = 42; // what a refused text leaves untouched
    const std::vector<Case> cases{
        {"HKEY_LOCAL_MACHINE\\software\\Torvand", kMachine, "software\\Torvand", false},
        {"HKEY_CURRENT_USER", 0x80000001, "", false},
        {"HKEY_DYN_DATA\\a", 0x80000006, "a", false},
        {"HKEY_local_machine\\a", 0, "a", false},
        {"HKEY_NOWHERE", 0, "", false},
        {"HKEY_USERS\\a\\", kBefore, "HKEY_USERS\\a\\", true},
        {"hkey_users\\a", kBefore, "hkey_users\\a", true},
        {"", kBefore, "", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Key);
        ScriptedHost host;
        Reporter report(host);
        std::string key = c.Key;
        RootKey root = kBefore;
        SplitKeyPath(key, root, report);
        EXPECT_EQ(root, c.Root);
        EXPECT_EQ(key, c.Rest);
        const Strings refused{"message: MORLIK: Incorrect Format:\n\n" + c.Key};
        EXPECT_EQ(host.Calls, c.HasMessage ? refused : Strings{});
    }
}

TEST_F(RegistryTest, UnknownRootReadsAndWritesNothing)
{
    const std::string key = "HKEY_NOWHERE\\a";
    RegCreateKey(Store, key, Report);
    RegWriteBinary(Store, key, "Name", "1", Report);
    RegWriteText(Store, key, "Name", "1", Report);
    EXPECT_EQ(RegReadValue(Store, key, "Name", Report), "");
    EXPECT_EQ(RegReadText(Store, key, "Name", Report), "");
    EXPECT_TRUE(Store.IsEmpty());
    EXPECT_TRUE(Host.Calls.empty());
}

TEST_F(RegistryTest, ReadsTextsInBothForms)
{
    using namespace std::string_literals;
    struct Case
    {
        std::string Stored;
        std::string Text; ///< what `RegReadText` makes of it; `RegReadValue` gives what is stored
    };
    const std::vector<Case> cases{
        {"C:\\ids.dat\0"s, "C:\\ids.dat"},
        {"  padded \0"s, "padded "},
        {"no terminator  ", "no terminato"}, // the cut takes a character of the text
        {"", ""},
        {"   ", ""},
        {std::string(254, 'x') + '\0', std::string(254, 'x')},
        {std::string(254, 'x'), std::string(253, 'x')},
        {std::string(255, 'x') + '\0', "Err"},
        {std::string(255, 'x'), "Err"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Stored);
        Store.CreateKey(kMachine, "k");
        Store.SetValue(kMachine, "k", "name", {RegistryType::Text, c.Stored});
        EXPECT_EQ(RegReadText(Store, "HKEY_LOCAL_MACHINE\\K", "Name", Report), c.Text);
        EXPECT_EQ(RegReadValue(Store, "HKEY_LOCAL_MACHINE\\K", "NAME", Report), c.Stored);
    }
    EXPECT_EQ(RegReadText(Store, "HKEY_LOCAL_MACHINE\\K", "other", Report), "Err");
}

TEST_F(RegistryTest, FirstRunWritesDefaultsAndReadsThem)
{
    const Settings settings = LoadSettings(Store, Report);
    EXPECT_EQ(settings.DestWADFolder, "C:\\");
    EXPECT_EQ(settings.LevelFolder, "C:\\");
    EXPECT_EQ(settings.Tomb5Folder, "D:\\");
    EXPECT_EQ(settings.TRObjIDFile, "Err");
    EXPECT_EQ(Folder("destwadfolder"), (RegistryValue{RegistryType::Text, "C:\\"}));
    EXPECT_EQ(Folder("Tomb5Folder"), (RegistryValue{RegistryType::Text, "D:\\"}));
    EXPECT_TRUE(Host.Calls.empty());
}

TEST_F(RegistryTest, FoldersComeBackInALaterRun)
{
    Settings settings = LoadSettings(Store, Report);
    settings.DestWADFolder = "E:\\wads\\";
    settings.Tomb5Folder = "";
    SaveSettings(settings, Store, Report);
    EXPECT_EQ(Folder("Sorbling version"), (RegistryValue{RegistryType::Binary, "17"}));

    EXPECT_EQ(LoadSettings(Store, Report).DestWADFolder, "E:\\wads\\");
    EXPECT_EQ(LoadSettings(Store, Report).Tomb5Folder, "");

    // An "Err" as folder text counts as a first run: all six are written anew.
    settings.DestWADFolder = "ERR";
    settings.LevelFolder = "F:\\";
    SaveSettings(settings, Store, Report);
    EXPECT_EQ(LoadSettings(Store, Report).LevelFolder, "C:\\");
}

TEST_F(RegistryTest, StoreThatCannotBeWrittenTellsOnlyOfBinaryValues)
{
    Store.RefusesWrites = true;
    const Settings settings = LoadSettings(Store, Report);
    EXPECT_EQ(settings.DestWADFolder, "Err");
    EXPECT_TRUE(Host.Calls.empty());
    SaveSettings(settings, Store, Report);
    EXPECT_EQ(Host.Calls, Strings{"message: MORLIK: Fout bij het schrijven van het register"});
}

} // namespace morlik::test
