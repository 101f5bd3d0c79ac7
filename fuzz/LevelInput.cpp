#include "fuzz/LevelInput.h"

#include "base/OutputFile.h"
#include "convert/ConvertLevel.h"
#include "samples/LevelWriter.h"

#include <array>
#include <cstring>
#include <filesystem>

namespace morlik::fuzz
{

namespace
{

constexpr std::array<const char*, 5> kEndings{".phd", ".tub", ".tr4", ".trc", "del.trc"};
constexpr std::size_t kMostLeftOut = 4; ///< tiles

std::uint32_t WordAt(std::span<const std::uint8_t> bytes, std::size_t at)
{
    std::uint32_t word = 0;
    if (at + sizeof word <= bytes.size())
        std::memcpy(&word, bytes.data() + at, sizeof word);
    return word;
}

std::uint8_t NameByte(VersionCode game)
{
    if (game == kTR5)
        return 3;
    if (game == kTR4)
        return 2;
    return game == kTR1Gold ? 1 : 0;
}

std::size_t BytesOfTiles(VersionCode game, std::size_t tiles)
{
    return tiles * kTilePixels * (samples::IsFirstGame(game) ? 1 : 3);
}

/// A folder for the levels and sets of this process. A fuzzer ends without clearing up: `./run
/// fuzz` gives it a place in memory and takes that away afterwards.
std::string OwnFolder()
{
    auto name = (std::filesystem::temp_directory_path() / "morlik-fuzz-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no folder for the fuzzer");
    return name;
}

} // namespace

std::size_t TileCountAt(VersionCode game)
{
    constexpr std::size_t kWordBytes = sizeof samples::LevelContent::FirstWord;
    constexpr std::size_t kPalettes = sizeof LevelData::Palette + sizeof LevelData::Palette16;
    return samples::IsFirstGame(game) ? kWordBytes : kWordBytes + kPalettes;
}

Bytes InputOf(const samples::LevelContent& level)
{
    const auto file = samples::WriteLevel(level).Bytes;
    Bytes input{NameByte(level.Game)};
    for (const std::byte byte : file)
        input.push_back(std::to_integer<std::uint8_t>(byte));
    if (IsOlderGame(level.Game)) {
        const auto from =
            input.begin() + static_cast<std::ptrdiff_t>(kNameBytes + TileCountAt(level.Game) + 4);
        const auto tiles = level.Tiles8.size() / kTilePixels;
        if (tiles <= kMostLeftOut)
            input.erase(from, from + static_cast<std::ptrdiff_t>(BytesOfTiles(level.Game, tiles)));
    }
    return input;
}

VersionCode GameOf(std::span<const std::uint8_t> input)
{
    const auto name = input.empty() ? 0U : input[0] % kEndings.size();
    switch (WordAt(input, kNameBytes)) {
    case 0x2d:
        return kTR2;
    case 0xff180038:
    case 0xff080038:
        return kTR3;
    case 0x20:
        return name == 1 ? kTR1Gold : kTR1;
    default:
        return name >= 3 ? kTR5 : kTR4;
    }
}

Run::Run() : Console(messages_, {.MainSFX = {}, .UpdateHorizon = true, .ExportSprites = true})
{
    static const std::string folder = OwnFolder();
    folder_ = folder;
}

std::string Run::WriteLevel(std::span<const std::uint8_t> input) const
{
    if (input.empty())
        return Write("level.phd", input);
    const VersionCode game = GameOf(input);
    const auto file = input.subspan(kNameBytes);
    const auto at = TileCountAt(game);
    const std::size_t tiles = WordAt(file, at);
    const std::string name = std::string("level") + kEndings[input[0] % kEndings.size()];
    if (!IsOlderGame(game) || tiles > kMostLeftOut || at + 4 > file.size())
        return Write(name, file);
    Bytes whole(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(at + 4));
    whole.resize(whole.size() + BytesOfTiles(game, tiles));
    whole.insert(whole.end(), file.begin() + static_cast<std::ptrdiff_t>(at + 4), file.end());
    return Write(name, whole);
}

std::string Run::Write(const std::string& name, std::span<const std::uint8_t> bytes) const
{
    WriteWholeFile(File(name), std::as_bytes(bytes));
    return File(name);
}

void Run::TryOnSet(std::span<const std::uint8_t> input,
                   const std::function<void(const ObjectSet&)>& work)
{
    Try([&] {
        LoadLevel(Program, WriteLevel(input));
        const auto set = ConvertLevel(Program.Level, Program.Names, "LEVEL", {}, Program.Report);
        if (set)
            work(*set);
    });
}

} // namespace morlik::fuzz
