#include "base/Files.h"
#include "base/Text.h"
#include "check/ObjectSetCheck.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

namespace morlik::check
{

namespace
{

/// A WAV file as the game holds it: game 1 cuts its samples by the length in the RIFF header, games
/// 2 and 3 by the length of the data behind the header of 44 bytes.
void CheckWave(Gatherer& out, const std::string& path, int game)
{
    const auto bytes = ReadFile(path);
    if (bytes.empty())
        return;
    ByteReader reader(bytes);
    reader.Section(path.c_str());
    const std::size_t header = game == 1 ? 8 : 44;
    const auto magic = reader.Read<std::array<char, 4>>();
    reader.Skip(header - 8);
    if (magic != std::array{'R', 'I', 'F', 'F'})
        out.Add(path, " is no RIFF file");
    else if (reader.Read<std::uint32_t>() != bytes.size() - header)
        out.Add(path, " has another size than its header says");
}

/// The sound that names the files of a detail: the last one that leads to it, or 0.
std::size_t SoundOf(const SfxFile& sfx, std::size_t detail)
{
    std::size_t sound = 0;
    for (std::size_t i = 0; i < sfx.SoundMap.size(); ++i)
        if (sfx.SoundMap[i] == static_cast<std::int64_t>(detail))
            sound = i;
    return sound;
}

} // namespace

Complaints CheckWas(const std::vector<std::string>& lines, const WadFile& wad, int game)
{
    Gatherer out;
    const std::size_t moveables = wad.Moveables.size();
    if (lines.size() != moveables + wad.StaticMeshes.size())
        out.Add(lines.size(), " lines for ", moveables, " moveables and ", wad.StaticMeshes.size(),
                " static meshes");
    const std::string root = ":Z:\\TOMB" + std::to_string(game) + "\\";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto names = lines[i].find(root);
        const auto path = lines[i].rfind('\\');
        if (names == std::string::npos || path < names + root.size())
            out.Add("Line ", i + 1, " has no source path");
        else if ((i >= moveables || game == 4) &&
                 lines[i].substr(0, names) != lines[i].substr(path + 1))
            out.Add("Line ", i + 1, " has two names for one object");
    }
    return std::move(out.List);
}

Complaints CheckSwd(const SwdFile& swd)
{
    Gatherer out;
    if (swd.Pixels.size() % kSetTileBytes != 0)
        out.Add(swd.Pixels.size(), " tile bytes are no whole tiles");
    for (std::size_t i = 0; i < swd.SpriteTextures.size(); ++i)
        if (const std::int64_t tile = swd.SpriteTextures[i].Tile;
            tile < 0 || tile >= static_cast<std::int64_t>(swd.Pixels.size() / kSetTileBytes))
            out.Add("Sprite texture ", i, " lies on tile ", tile);
    return std::move(out.List);
}

Complaints CheckSounds(const std::string& setBase, int game)
{
    Gatherer out;
    const auto lines = ReadLines(setBase + ".sam");
    const SfxFile sfx = ReadSfx(ReadFile(setBase + ".sfx"));
    if (game > 3)
        return {};
    std::vector<std::string> expected;
    std::set<std::string> wanted; // a sample beyond the indices has a line and no file
    for (std::size_t i = 0; i < sfx.SoundDetails.size(); ++i) {
        const SfxSoundDetail& detail = sfx.SoundDetails[i];
        const auto stem =
            "TR" + std::to_string(game) + " Sound " + std::to_string(SoundOf(sfx, i)) + "-";
        for (int v = 0; v < detail.NumSamples(); ++v) {
            expected.push_back(stem + std::to_string(v) + ".wav");
            const std::int64_t sample = detail.Sample + v;
            if (sample >= 0 && sample < static_cast<std::int64_t>(sfx.SampleIndices.size()))
                wanted.insert(expected.back());
        }
    }
    if (lines.size() != expected.size())
        out.Add(lines.size(), " lines for ", expected.size(), " samples");
    for (std::size_t i = 0; i < std::min(lines.size(), expected.size()); ++i)
        if (lines[i] != expected[i])
            out.Add("Line ", i + 1, " is \"", lines[i], "\", not \"", expected[i], "\"");
    const auto folder = ToPath(setBase + "-Sounds");
    const bool hasWaves = game == 1 || std::filesystem::exists(folder);
    for (const std::string& name : wanted)
        if (hasWaves && !std::filesystem::exists(folder / name))
            out.Add("The WAV file ", name, " is missing");
    const std::set<std::string> named(lines.begin(), lines.end());
    std::error_code noFolder;
    for (const auto& entry : std::filesystem::directory_iterator(folder, noFolder)) {
        const std::string name = FromPath(entry.path().filename());
        if (named.contains(name))
            CheckWave(out, FromPath(entry.path()), game);
        else
            out.Add("No line names the file ", name);
    }
    return std::move(out.List);
}

SetReport CheckSet(const std::string& setBase, int game)
{
    SetReport report;
    WadFile wad;
    const auto check = [&](const std::string& extension, const auto& complaintsOf) {
        const std::string path = setBase + extension;
        if (!std::filesystem::exists(ToPath(path))) {
            report.Missing.push_back(extension);
            return;
        }
        try {
            for (const std::string& complaint : complaintsOf(path))
                report.Problems.push_back(extension.substr(1) + ": " + complaint);
        } catch (const std::runtime_error& failure) {
            report.Problems.push_back(extension.substr(1) + ": " + failure.what());
        }
    };
    check(".wad", [&](const std::string& path) {
        wad = ReadWad(path);
        return CheckWad(wad, game);
    });
    check(".was", [&](const std::string& path) { return CheckWas(ReadLines(path), wad, game); });
    check(".swd", [&](const std::string& path) { return CheckSwd(ReadSwd(ReadFile(path))); });
    check(".sfx", [&](const std::string&) { return CheckSounds(setBase, game); });
    if (!std::filesystem::exists(ToPath(setBase + ".sam")))
        report.Missing.emplace_back(".sam");
    return report;
}

} // namespace morlik::check
