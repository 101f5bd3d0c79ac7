// Writes the seeds of all fuzzers below a folder, one folder for each: the smallest levels of all
// games, and the full ones with their tiles left out where that is possible.
// usage: morlik-fuzz-seeds FOLDER

#include "base/Narrow.h"
#include "base/OutputFile.h"
#include "fuzz/LevelInput.h"
#include "samples/LevelWriter.h"
#include "samples/MainSfx.h"
#include "samples/Project.h"
#include "samples/Textures.h"
#include "tests/support/WaveFile.h"

#include <array>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

namespace
{

using namespace morlik;

constexpr std::array<VersionCode, 6> kGames{kTR1, kTR1Gold, kTR2, kTR3, kTR4, kTR5};

class Seeds
{
public:
    explicit Seeds(std::filesystem::path folder) : folder_(std::move(folder)) {}

    void Write(const std::string& fuzzer, const std::string& name,
               std::span<const std::byte> bytes) const
    {
        std::filesystem::create_directories(folder_ / fuzzer);
        WriteWholeFile((folder_ / fuzzer / name).string(), bytes);
    }
    void Write(const std::string& fuzzer, const std::string& name, const std::string& text) const
    {
        Write(fuzzer, name, std::as_bytes(std::span(text)));
    }

private:
    std::filesystem::path folder_;
};

/// The full level without its many tile rows.
samples::LevelContent FullLevel(VersionCode game)
{
    auto level = samples::MakeRichLevel(game);
    if (!IsOlderGame(game)) {
        level.Tiles32.resize(kTileSide);
        level.Tiles16.resize(kTileSide);
    }
    return level;
}

void WriteLevels(const Seeds& seeds)
{
    for (const VersionCode game : kGames) {
        const std::string name = "game" + DigitsOf(game);
        auto fractional = samples::MakeSmallestLevel(game);
        samples::MakeFractional(fractional);
        for (const char* fuzzer :
             {"level", "set", "sheet", "choice", "picture", "animate", "gltf", "info"}) {
            const auto put = [&](const std::string& kind, const samples::LevelContent& level) {
                const auto input = fuzz::InputOf(level);
                seeds.Write(fuzzer, name + kind, std::as_bytes(std::span(input)));
            };
            put("-smallest", samples::MakeSmallestLevel(game));
            put("-fractional", fractional);
            put("-full", FullLevel(game));
            if (samples::IsFirstGame(game)) {
                auto other = samples::MakeSmallestLevel(game);
                other.OtherPalettePlace = true;
                put("-palette", other);
            }
            for (const bool outside : {false, true})
                if (game == kTR4) {
                    auto extended = FullLevel(game);
                    samples::MakeExtended(extended, 1024, outside);
                    put(outside ? "-outside" : "-extended", extended);
                }
        }
    }
    seeds.Write("block", "smallest",
                samples::WriteLevelBlock(samples::MakeSmallestLevel(kTR4)).Bytes);
    seeds.Write("block", "full", samples::WriteLevelBlock(FullLevel(kTR4)).Bytes);
}

/// The files of saved sets, each behind the byte that tells the checker what it is.
void WriteSets(const Seeds& seeds)
{
    int game = 0;
    for (const VersionCode code : {kTR1, kTR2, kTR3, kTR4, kTR5}) {
        fuzz::Run run;
        run.Try([&] {
            LoadLevel(run.Program, run.WriteLevel(fuzz::InputOf(samples::MakeSmallestLevel(code))));
            SaveLevel(run.Program, run.File("set.was"));
        });
        const auto put = [&](int kind, const std::vector<std::string>& extensions) {
            std::vector<std::byte> input{static_cast<std::byte>(kind)};
            for (const std::string& extension : extensions) {
                const auto file = FileBytes::Load(run.File("set." + extension));
                input.insert(input.end(), file.Bytes().begin(), file.Bytes().end());
            }
            seeds.Write("check", extensions[0] + std::to_string(game), input);
        };
        put(game, {"wad"});
        put(7, {"was"});
        if (code != kTR4 && code != kTR5) { // the others have the default files
            put(5, {"swd"});
            put(6, {"sfx", "sam"});
        }
        ++game;
    }
}

void WriteOthers(const Seeds& seeds)
{
    auto project = samples::MakeProject();
    seeds.Write("project", "project", samples::WriteProject(project).Bytes);
    project.Later = true;
    seeds.Write("project", "later", samples::WriteProject(project).Bytes);
    seeds.Write("wave", "pcm", samples::MakeWav(440, 0.01));
    seeds.Write("wave", "adpcm", test::MakeADPCM().Bytes());
    seeds.Write("sounds", "main.sfx", samples::WriteMainSfx(samples::SampleSounds()).Bytes);

    ByteWriter names;
    for (int section = 0; section < 6; ++section) {
        const std::string name = "Name";
        names.Put(std::uint32_t{1});
        names.Put(narrow<std::uint32_t>(name.size()));
        names.PutBytes(std::as_bytes(std::span(name)));
        if (section >= 2)
            names.Put(std::uint32_t{0});
    }
    seeds.Write("names", "names", names.Bytes());
    seeds.Write("batch", "line", R"(/makewas C:\levels\my level.phd /export D:\sets\my set.was)");
    seeds.Write("key", "key", R"(HKEY_LOCAL_MACHINE\software\Torvand)");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: morlik-fuzz-seeds FOLDER\n";
        return 2;
    }
    try {
        const Seeds seeds(argv[1]);
        WriteLevels(seeds);
        WriteSets(seeds);
        WriteOthers(seeds);
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
