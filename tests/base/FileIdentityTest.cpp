#include "base/FileIdentity.h"

#include "base/Files.h"
#include "base/Folders.h"
#include "base/OutputFile.h"
#include "tests/support/Failures.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <vector>

namespace morlik::test
{

namespace
{

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

TEST(Inputs, AreKnownUnderEveryName)
{
    const TempFolder folder;
    const auto input = folder.File("level.phd");
    WriteWholeFile(input, std::as_bytes(std::span("level")));
    WriteWholeFile(folder.File("twin"), std::as_bytes(std::span("level"))); // as long, and no more
    fs::create_directory(folder.Path() / "sub");
    fs::create_hard_link(input, folder.File("hard.wad"));
    Strings same{input, folder.File("./sub/../level.phd"), folder.File("hard.wad")};
#ifndef _WIN32
    fs::create_symlink("level.phd", folder.File("soft.wad"));
    fs::create_symlink("../soft.wad", folder.File("sub/soft.sam"));
    fs::create_directory_symlink(".", folder.File("here"));
    fs::create_symlink("nowhere", folder.File("dangling"));
    same.insert(same.end(), {folder.File("soft.wad"), folder.File("sub/soft.sam"),
                             folder.File("here/hard.wad")});
#endif
    const Strings others{folder.File("twin"), folder.File("none"), folder.File("sub"),
                         folder.File("dangling"), ""};
    const Strings inputs{folder.File("gone"), folder.File("sub"), "", input};
    EXPECT_EQ(FailureOf([&] { GuardInputs(inputs, others); }), "");
    for (const std::string& output : same) {
        Strings outputs = others;
        outputs.push_back(output);
        EXPECT_EQ(FailureOf([&] { GuardInputs(inputs, outputs); }),
                  "Can't write " + output + ": it " +
                      (output == input ? "" : "is " + input + ", which ") +
                      "is read and would be replaced");
    }
}

TEST(Folders, ThatCannotBeMadeTellWhy)
{
    const TempFolder folder;
    const auto file = folder.File("file");
    WriteWholeFile(file, {});
    for (const char* good : {"", "a", "a/b/c", "a/b/c/"})
        EXPECT_EQ(FailureOf([&] { MakeFolder(folder.Path() / good); }), "") << good;
    EXPECT_EQ(FailureOf([] { MakeFolder({}); }), "");
    EXPECT_TRUE(fs::is_directory(folder.File("a/b/c")));
    const std::string tells = "Can't make the folder ";
    EXPECT_EQ(FailureOf([&] { MakeFolder(file); }), tells + file + ": Not a directory");
#ifndef _WIN32
    // The system makes no folder in the place of a link; that there is none would fool the user.
    fs::create_symlink("nowhere", folder.File("link"));
    const auto told = FailureOf([&] { MakeFolder(folder.File("link")); });
    EXPECT_TRUE(told.starts_with(tells + folder.File("link") + ": ")) << told;
    EXPECT_EQ(told.find("No such file"), std::string::npos) << told;
#endif
}

} // namespace

} // namespace morlik::test
