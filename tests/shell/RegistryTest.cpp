#include "shell/Register_Mod.h"
#include "shell/Settings_Mod.h"
#include "shell/UserRegistry.h"
#include "tests/support/MemoryRegistry.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>
#include <memory>

namespace morlik::test
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

TEST_F(RegistryTest, SplitsAKeyIntoItsRootAndThePathBelow)
{
    constexpr RootKey kBefore = 42; // what a refused text leaves untouched
    const std::vector<std::tuple<std::string, RootKey, std::string>> rows{
        {"HKEY_LOCAL_MACHINE\\software\\Torvand", kMachine, "software\\Torvand"},
        {"HKEY_CURRENT_USER", 0x80000001, ""},
        {"HKEY_DYN_DATA\\a", 0x80000006, "a"},
        {"HKEY_local_machine\\a", 0, "a"},
        {"HKEY_NOWHERE", 0, ""},
        {"HKEY_USERS\\a\\", kBefore, "HKEY_USERS\\a\\"},
        {"hkey_users\\a", kBefore, "hkey_users\\a"},
        {"", kBefore, ""},
    };
    for (const auto& [text, wanted, rest] : rows) {
        Host.Calls.clear();
        std::string key = text;
        RootKey root = kBefore;
        SplitKeyPath(key, root, Report);
        EXPECT_EQ(root, wanted) << text;
        EXPECT_EQ(key, rest);
        const Strings refused{"message: MORLIK: Incorrect Format:\n\n" + text};
        EXPECT_EQ(Host.Calls, wanted == kBefore ? refused : Strings{}) << text;
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
    // What is stored, as `RegReadValue` gives it, and what `RegReadText` makes of it.
    const std::vector<std::pair<std::string, std::string>> rows{
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
    Store.CreateKey(kMachine, "k");
    for (const auto& [stored, read] : rows) {
        Store.SetValue(kMachine, "k", "name", {RegistryType::Text, stored});
        EXPECT_EQ(RegReadText(Store, "HKEY_LOCAL_MACHINE\\K", "Name", Report), read) << stored;
        EXPECT_EQ(RegReadValue(Store, "HKEY_LOCAL_MACHINE\\K", "NAME", Report), stored);
    }
    EXPECT_EQ(RegReadText(Store, "HKEY_LOCAL_MACHINE\\K", "other", Report), "Err");
}

TEST_F(RegistryTest, FoldersComeBackInALaterRun)
{
    Settings settings = LoadSettings(Store, Report); // the first one writes what it begins with
    EXPECT_EQ(settings.DestWADFolder + settings.LevelFolder + settings.Tomb5Folder, "C:\\C:\\D:\\");
    EXPECT_EQ(settings.TRObjIDFile, "Err");
    EXPECT_EQ(Folder("destwadfolder"), (RegistryValue{RegistryType::Text, "C:\\"}));
    EXPECT_EQ(Folder("Tomb5Folder"), (RegistryValue{RegistryType::Text, "D:\\"}));
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

    MemoryRegistry refusing;
    refusing.RefusesWrites = true;
    EXPECT_EQ(LoadSettings(refusing, Report).DestWADFolder, "Err");
    SaveSettings(settings, refusing, Report); // tells of its binary values alone
    EXPECT_EQ(Host.Calls, Strings{"message: MORLIK: Fout bij het schrijven van het register"});
}

TEST_F(RegistryTest, KeysOfTheMachineThatMayNotBeWrittenAreTheUsers)
{
    const auto text = [](const char* bytes) { return RegistryValue{RegistryType::Text, bytes}; };
    auto inner = std::make_unique<MemoryRegistry>();
    MemoryRegistry& system = *inner;
    UserRegistry registry(std::move(inner));

    // As an administrator: the machine's alone.
    LoadSettings(registry, Report);
    EXPECT_EQ(system.QueryValue(kMachine, kFolders, "LevelFolder"), text("C:\\"));
    EXPECT_EQ(system.QueryValue(kCurrentUser, kFolders, "LevelFolder"), std::nullopt);

    // Then as a user, who has no keys yet: what is read are the machine's folders until a save.
    system.RefusedRoot = kMachine;
    Settings settings = LoadSettings(registry, Report);
    EXPECT_EQ(settings.LevelFolder, "C:\\");
    settings.LevelFolder = "E:\\";
    SaveSettings(settings, registry, Report);
    EXPECT_EQ(system.QueryValue(kMachine, kFolders, "LevelFolder"), text("C:\\"));
    EXPECT_EQ(LoadSettings(registry, Report).LevelFolder, "E:\\");

    // An administrator's save is not hidden by the user's keys.
    system.RefusedRoot = 0;
    settings.LevelFolder = "F:\\";
    SaveSettings(settings, registry, Report);
    EXPECT_EQ(LoadSettings(registry, Report).LevelFolder, "F:\\");

    // Nothing may be written at all: told, as ever.
    system.RefusesWrites = true;
    SaveSettings(settings, registry, Report);
    EXPECT_EQ(Host.Calls, Strings{"message: MORLIK: Fout bij het schrijven van het register"});
}

TEST_F(RegistryTest, AUsersFirstRunMakesKeysOfTheirOwn)
{
    auto inner = std::make_unique<MemoryRegistry>();
    inner->RefusedRoot = kMachine;
    UserRegistry registry(std::move(inner));
    EXPECT_EQ(LoadSettings(registry, Report).Tomb5Folder, "D:\\");
    RegWriteBinary(registry, kProgramKey, "MORLIKMajor", "1", Report);
    EXPECT_EQ(RegReadValue(registry, kProgramKey, "MORLIKMajor", Report), "1");
    EXPECT_TRUE(Host.Calls.empty());
}

} // namespace morlik::test
