#include "tests/output/Conversion.h"

#include "base/Text.h"
#include "shell/MORLIK_Main.h"

namespace morlik::test
{

const char* LevelName(VersionCode game)
{
    switch (game) {
    case kTR1:
        return "level.phd";
    case kTR1Gold:
        return "level.tub";
    case kTR4:
        return "level.tr4";
    case kTR5:
        return "level.trc";
    default:
        return "level.tr2";
    }
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
}

void Conversion::CopyDataFiles()
{
    for (const char* name : {"TR4Objects.dat", "morlik.sam", "morlik.sfx", "morlik.swd"})
        std::filesystem::copy_file(std::filesystem::path(MORLIK_DATA_FOLDER) / name,
                                   ToPath(Folder.File(name)));
}

void Conversion::OpenLog()
{
    OpenLogFile(Folder.File("log"), Project.Report);
}

std::vector<std::string> Conversion::LogLines() const
{
    auto lines = ReadLines(Folder.File("log"));
    lines.erase(lines.begin(), lines.begin() + 3);
    return lines;
}

bool Conversion::Load(const std::vector<std::byte>& file, const std::string& name)
{
    WriteWholeFile(Folder.File(name), file);
    Project.LevelTitle = name;
    return EndOf([&] { LoadLevel(Project, Folder.File(name)); }).empty();
}

bool Conversion::Load(const samples::LevelContent& level)
{
    return Load(WriteLevel(level).Bytes, LevelName(level.Game));
}

} // namespace morlik::test
