#include "set/ReadSet.h"

#include "base/FileGroup.h"
#include "base/Files.h"
#include "base/Text.h"
#include "set/Sounds.h"
#include "set/Swd.h"
#include "set/Wad.h"
#include "set/Was.h"

#include <system_error>

namespace morlik
{

namespace
{

constexpr std::size_t kMostBytes = std::size_t{128} << 20U;
constexpr std::size_t kMostListBytes = std::size_t{4} << 20U;

std::shared_ptr<const FileBytes> Load(const std::string& path, std::size_t most)
{
    return std::make_shared<FileBytes>(FileBytes::Load(path, most));
}

void ReadList(const std::string& path, ObjectSet& set)
{
    const auto file = LoadListFile(path);
    const auto bytes = file->Bytes();
    set.Game = GameOfWas({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    if (set.Game == kNoLevel)
        throw ReadFailure("list: no line tells the game");
    for (const std::string& line : ReadLines(bytes)) {
        auto cut = CutWasLine(line, set.Game);
        if (!cut)
            throw ReadFailure("list: line " + std::to_string(set.Listed.size() + 1) +
                              " has no source path");
        set.SourceTitle = std::move(cut->SourceTitle);
        set.Listed.push_back(std::move(cut->Names));
    }
}

void ReadSamples(const SetNames& names, ObjectSet& set)
{
    std::size_t bytes = 0;
    for (const std::string& name : ReadLines(LoadListFile(names.With("sam"))->Bytes())) {
        SetSample& sample = set.Samples.emplace_back(SetSample{name, {}});
        const auto path = names.SoundFolder() + "/" + name;
        std::error_code missing;
        // A name with a path in it leads elsewhere.
        if (name.find_first_of("/\\") != std::string::npos ||
            !std::filesystem::is_regular_file(ToPath(path), missing))
            continue;
        const auto file = Load(path, kMostWaveBytes);
        bytes += file->Bytes().size();
        if (bytes > kMostWaveBytes)
            throw ReadFailure("samples: more bytes than any set has");
        sample.Wave = file->Bytes();
        set.Owners.push_back(file);
    }
}

} // namespace

std::shared_ptr<const FileBytes> LoadSetFile(const std::string& path)
{
    return Load(path, kMostBytes);
}

std::shared_ptr<const FileBytes> LoadListFile(const std::string& path)
{
    return Load(path, kMostListBytes);
}

ObjectSet ReadSet(const std::string& fileName)
{
    const SetNames names(fileName);
    FinishGroup(names.With("was"));
    ObjectSet set;
    ReadList(names.With("was"), set);
    const auto wad = LoadSetFile(names.With("wad"));
    ReadWad(wad->Bytes(), wad, set);
    ReadSfx(LoadSetFile(names.With("sfx"))->Bytes(), set);
    ReadSamples(names, set);
    const auto swd = LoadSetFile(names.With("swd"));
    ReadSwd(swd->Bytes(), swd, set);
    set.Info = ReadLines(LoadListFile(names.Info())->Bytes());
    return set;
}

} // namespace morlik
