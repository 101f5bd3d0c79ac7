#pragma once

// What nearly every test needs, with what it is looked at by.

#include "base/OutputFile.h"
#include "base/Text.h"
#include "samples/LevelWriter.h"
#include "samples/MainSfx.h"
#include "set/ObjectSet.h"
#include "set/ReadSet.h"
#include "shell/Session.h"
#include "tests/support/Failures.h"
#include "tests/support/ScriptedHost.h"
#include "tests/support/TempFolder.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace morlik::test
{

constexpr std::array<VersionCode, 6> kGames{kTR1, kTR1Gold, kTR2, kTR3, kTR4, kTR5};

/// File name that levels of a game go by.
const char* LevelName(VersionCode game);

/// The part of a level file in which its sections stand uncompressed: all of it, for Tomb Raider IV
/// the level block. `FileOf` makes the file of it again.
samples::LevelFile PartOf(const samples::LevelContent& level);
std::vector<std::byte> FileOf(const samples::LevelContent& level, const samples::LevelFile& part);

/// A `main.sfx` with the sounds of the samples.
inline std::vector<std::byte> MainSfxFile()
{
    return samples::WriteMainSfx(samples::SampleSounds()).Bytes;
}

/// A run of the program in a folder of its own: levels are written there, loaded and saved.
class Conversion
{
public:
    /// The folder is the program's, with its data files.
    Conversion();
    /// With a level that is loaded.
    explicit Conversion(const samples::LevelContent& level);

    /// Opens a log in the folder.
    void OpenLog();
    /// Its lines behind the three of its head.
    Strings LogLines() const;

    /// Writes and loads a level. Gives false where that ended the program.
    bool Load(const std::vector<std::byte>& file, const std::string& name);
    bool Load(const samples::LevelContent& level);

    /// Saves the loaded level as "set.was". Gives whether the set is complete.
    bool Save() { return SaveLevel(Program, Base() + ".was"); }

    /// Path of the set without an extension.
    std::string Base() const { return Folder.File("set"); }
    std::string Output(const std::string& ending) const { return Base() + ending; }
    /// The set as it is read back.
    ObjectSet Set() const { return ReadSet(Output(".was")); }
    /// Its WAD file alone.
    ObjectSet Wad() const;

    TempFolder Folder;
    ScriptedHost Host;
    Session Program{Host};
};

/// A whole file.
std::vector<std::byte> ReadFile(const std::string& path);
/// All files below a folder, hidden ones too, by their names from there on.
using FileMap = std::map<std::string, std::vector<std::byte>>;
FileMap FilesBelow(const std::filesystem::path& folder);
/// Lines of a text file.
Strings LinesOfFile(const std::string& path);

/// All pixels of some tiles, R, G, B.
std::vector<std::uint8_t> PixelsOf(const SetTiles& tiles);

/// What the end of the program says; empty where `work` doesn't end it.
template <class Work>
std::string EndOf(Work work)
{
    return MessageOf<ProgramEnd>(work);
}

} // namespace morlik::test
