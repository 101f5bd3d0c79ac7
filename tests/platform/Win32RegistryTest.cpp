#ifdef _WIN32

#include "platform/Win32Registry.h"

#include "base/Text.h"
#include "platform/Win32Text.h"
#include "shell/Register_Mod.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>
#include <random>
#include <windows.h>

namespace morlik::test
{

namespace
{

using namespace std::string_literals;

constexpr RootKey kUser = 0x80000001;

/// A key of its own in the user's part of the system's registry, removed at the end.
class Win32RegistryTest : public testing::Test
{
protected:
    ~Win32RegistryTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, ToWide(Top).c_str()); }

    /// The bytes of a text as the system keeps them.
    DWORD StoredSize(const std::string& name) const
    {
        DWORD size = 0;
        RegGetValueW(HKEY_CURRENT_USER, ToWide(Key).c_str(), ToWide(name).c_str(),
                     RRF_RT_ANY | RRF_NOEXPAND, nullptr, nullptr, &size);
        return size;
    }

    void StoreRaw(const std::string& name, DWORD type, const void* data, DWORD size) const
    {
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, ToWide(Key).c_str(), ToWide(name).c_str(),
                                  type, data, size),
                  ERROR_SUCCESS);
    }

    std::string Top = "Software\\Morlik test " + Hex(std::random_device()());
    std::string Key = Top + "\\\u0141\u00f3d\u017a";
    Win32Registry Store;
};

TEST_F(Win32RegistryTest, KeepsValuesOfBothTypesUntilTheyAreDeleted)
{
    EXPECT_FALSE(Store.SetValue(kUser, Key, "Folder", {RegistryType::Text, "C:\\"}));
    EXPECT_EQ(Store.QueryValue(kUser, Key, "Folder"), std::nullopt);
    ASSERT_TRUE(Store.CreateKey(kUser, Key));
    EXPECT_TRUE(Store.CreateKey(kUser, ToUpper(Top)));

    const std::vector<std::pair<std::string, RegistryValue>> values{
        {"Folder", {RegistryType::Text, "C:\\"}},
        {"\u57ce", {RegistryType::Text, "D:\\zamek-\u0142\u00f3d\u017a \u00fc \u57ce\\"}},
        {"empty", {RegistryType::Text, ""}},
        {"version", {RegistryType::Binary, "17"}},
        {"bytes", {RegistryType::Binary, "\0\xff\x80\0"s}},
        {"none", {RegistryType::Binary, ""}},
    };
    for (const auto& [name, value] : values) {
        EXPECT_TRUE(Store.SetValue(kUser, Key, name, value)) << name;
        EXPECT_EQ(Store.QueryValue(kUser, Key, name), value) << name;
        EXPECT_EQ(Store.QueryValue(kUser, ToLower(Key), ToUpper(name)), value) << name;
    }
    for (const auto& [name, value] : values) {
        RegDeleteKeyValueW(HKEY_CURRENT_USER, ToWide(Key).c_str(), ToWide(name).c_str());
        EXPECT_EQ(Store.QueryValue(kUser, Key, name), std::nullopt) << name;
    }
    EXPECT_FALSE(Store.CreateKey(0, Key));
}

TEST_F(Win32RegistryTest, CountsNoTerminatorAndReadsThatOfOtherPrograms)
{
    ScriptedHost host;
    Reporter report(host);
    const std::string key = "HKEY_CURRENT_USER\\" + Key;
    ASSERT_TRUE(Store.CreateKey(kUser, Key));
    RegWriteText(Store, key, "Folder", "C:\\", report);
    EXPECT_EQ(StoredSize("Folder"), 3 * sizeof(wchar_t));
    EXPECT_EQ(RegReadValue(Store, key, "Folder", report), "C:\\");

    const std::wstring path = L"C:\\ids.dat";
    StoreRaw("File", REG_EXPAND_SZ, path.c_str(), 11 * sizeof(wchar_t));
    EXPECT_EQ(RegReadValue(Store, key, "File", report), "C:\\ids.dat\0"s);
    EXPECT_EQ(RegReadText(Store, key, "File", report), "C:\\ids.dat");
    const DWORD number = 0x41424344;
    StoreRaw("Number", REG_DWORD, &number, sizeof(number));
    EXPECT_EQ(RegReadValue(Store, key, "Number", report), "DCBA");
    EXPECT_TRUE(host.Calls.empty());
}

} // namespace

} // namespace morlik::test

#endif
