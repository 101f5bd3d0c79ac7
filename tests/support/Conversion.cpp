#include "tests/support/Conversion.h"

#include "set/Wad.h"
#include "set/Was.h"
#include "shell/MORLIK_Main.h"

namespace morlik::test
{

const char* LevelName(VersionCode game)
{
    return game == kTR1       ? "level.phd"
           : game == kTR1Gold ? "level.tub"
           : game == kTR4     ? "level.tr4"
           : game == kTR5     ? "level.trc"
                              : "level.tr2";
}

samples::LevelFile PartOf(const samples::LevelContent& level)
{
    return level.Game == kTR4 ? WriteLevelBlock(level) : WriteLevel(level);
}

std::vector<std::byte> FileOf(const samples::LevelContent& level, const samples::LevelFile& part)
{
    return level.Game == kTR4 ? WrapTR4(level, part.Bytes).Bytes : part.Bytes;
}

Conversion::Conversion()
{
    Host.Folder = Folder.File("");
    for (const char* name : {"TR4Objects.dat", "morlik.sam", "morlik.sfx", "morlik.swd"})
        std::filesystem::copy_file(std::filesystem::path(MORLIK_DATA_FOLDER) / name,
                                   ToPath(Folder.File(name)));
}

Conversion::Conversion(const samples::LevelContent& level) : Conversion()
{
    EXPECT_TRUE(Load(level));
}

void Conversion::OpenLog()
{
    OpenLogFile(Folder.File("log"), Program.Report);
}

Strings Conversion::LogLines() const
{
    auto lines = LinesOfFile(Folder.File("log"));
    lines.erase(lines.begin(), lines.begin() + 3);
    return lines;
}

ObjectSet Conversion::Wad() const
{
    ObjectSet set;
    set.Game = Program.Level.Version;
    const auto file = LoadSetFile(Output(".wad"));
    ReadWad(file->Bytes(), file, set);
    return set;
}

std::vector<std::byte> ReadFile(const std::string& path)
{
    const auto file = FileBytes::Load(path);
    return {file.Bytes().begin(), file.Bytes().end()};
}

FileMap FilesBelow(const std::filesystem::path& folder)
{
    FileMap files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) {
            const auto name = entry.path().lexically_relative(folder).generic_u8string();
            files[{name.begin(), name.end()}] = ReadFile(FromPath(entry.path()));
        }
    return files;
}

Strings LinesOfFile(const std::string& path)
{
    return ReadLines(FileBytes::Load(path).Bytes());
}

std::vector<std::uint8_t> PixelsOf(const SetTiles& tiles)
{
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(tiles.NumBytes()));
    for (std::int64_t row = 0; row < tiles.Count() * kTileSide; ++row)
        tiles.CopyRow(
            row, reinterpret_cast<std::byte*>(&pixels[static_cast<std::size_t>(row) * kRowBytes]));
    return pixels;
}

bool Conversion::Load(const std::vector<std::byte>& file, const std::string& name)
{
    Folder.Write(name, file);
    Program.LevelTitle = name;
    return EndOf([&] { LoadLevel(Program, Folder.File(name)); }).empty();
}

bool Conversion::Load(const samples::LevelContent& level)
{
    return Load(WriteLevel(level).Bytes, LevelName(level.Game));
}

} // namespace morlik::test
