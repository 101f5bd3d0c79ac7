#include "check/ObjectSetCheck.h"
#include "level/Extension.h"
#include "samples/MainSfx.h"
#include "tests/support/Conversion.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

using samples::LevelContent;
using samples::LevelFile;
using samples::MakeRichLevel;

/// The files of a saved set but for the Info text.
std::vector<std::vector<std::byte>> FilesOfSave(Conversion& run)
{
    EXPECT_TRUE(run.Save());
    std::vector<std::vector<std::byte>> files;
    for (const char* ending : {".wad", ".was", ".swd", ".sam", ".sfx"})
        files.push_back(ReadFile(run.Output(ending)));
    return files;
}

/// The WAV files beside a set, by their names.
FileMap WavesOf(const std::string& base)
{
    const auto folder = ToPath(base + "-Sounds");
    return std::filesystem::exists(folder) ? FilesBelow(folder) : FileMap();
}

TEST(Extended, GivesTheSetOfItsTwinInTheFormOfTheGame)
{
    const std::vector<std::tuple<std::uint16_t, bool, const char*>> rows{
        {0, false, ""},
        {370, false, ""},
        {100, false, ""}, // the further slots are free
        {402, false, "1 sound has a number above 369 and no slot in the SFX file: 401"},
        {1024, false, "2 sounds have numbers above 369 and no slot in the SFX file: 401, 510"},
        {2048, true, "2 sounds have numbers above 369 and no slot in the SFX file: 401, 510"}};
    for (const auto& [numSlots, outside, note] : rows) {
        LevelContent twin = MakeRichLevel(kTR4);
        twin.NumOthers = 0; // no demo data
        LevelContent extended = twin;
        samples::MakeExtended(extended, numSlots, outside);
        if (numSlots != 0)
            for (std::size_t slot = numSlots; slot < kSoundMapSlotsTR2; ++slot)
                twin.SoundMap[slot] = -1;
        std::array<Conversion, 2> runs;
        runs[0].OpenLog();
        ASSERT_TRUE(runs[0].Load(extended));
        ASSERT_TRUE(runs[1].Load(twin));
        const LevelData& level = runs[0].Program.Level;
        const LevelData& other = runs[1].Program.Level;
        EXPECT_EQ(level.SoundMap, other.SoundMap) << numSlots;
        EXPECT_EQ(level.SoundDetails.size(), other.SoundDetails.size());
        EXPECT_EQ(level.SampleIndices, other.SampleIndices);
        EXPECT_EQ(level.NumSamples, outside ? 0 : other.NumSamples);
        for (std::size_t i = 0; i < level.Samples.size(); ++i)
            EXPECT_TRUE(std::ranges::equal(level.Samples[i].Data, other.Samples[i].Data));
        EXPECT_EQ(FilesOfSave(runs[0]), FilesOfSave(runs[1])) << numSlots;
        EXPECT_EQ(runs[0].Host.Messages(), Strings());
        const Strings notes(note[0] == 0 ? 0 : 1, note);
        EXPECT_EQ(runs[0].Host.Hints, notes);
        const auto lines = runs[0].LogLines();
        EXPECT_EQ(std::ranges::count(lines, note), std::ssize(notes));
    }
}

TEST(Extended, ChecksCountsAndLooksForNoSizeAtTheEnd)
{
    const std::vector<std::tuple<const char*, std::int64_t, const char*>> rows{
        {"Slots", 0xffff, "sound map, offset "},
        {"Slots", 1025, "sample indices, offset "},
        {"Samples", -1, "samples, offset "},
        {"Samples", 0x7fffffff, "samples, offset "},
        {"Samples", 12, "samples, offset "}, // of 11
        {"Samples", 0, ""},
        {"Extension", 0, ""},
        {"Extension", 0xffffffff, ""}};
    LevelContent level = MakeRichLevel(kTR4);
    for (const bool outside : {false, true})
        for (const auto& [count, value, place] : rows) {
            samples::MakeExtended(level, 1024, outside);
            LevelFile block = WriteLevelBlock(level);
            const bool inBlock = count == std::string("Slots");
            if (inBlock)
                block.SetCount(count, value);
            LevelFile file = WrapTR4(level, block.Bytes);
            if (!inBlock)
                file.SetCount(count, value);
            Conversion run;
            EXPECT_EQ(run.Load(file.Bytes, "a.tr4"), place[0] == 0) << count << value;
            if (place[0] != 0) {
                EXPECT_EQ(run.Host.Details.at(0).find(place), 0U) << run.Host.Details[0];
            }
        }
}

TEST(Extended, TakesSamplesThatStandInAMainSFXFromThere)
{
    LevelContent content = MakeRichLevel(kTR4);
    samples::MakeExtended(content, 1024, true);
    const auto sounds = samples::SampleSounds();
    auto mainSFX = samples::WriteMainSfx(sounds).Bytes;
    const auto end = narrow<std::uint32_t>(mainSFX.size());
    auto& places = content.Extension->Places;
    places[1] = {places[1].Start + 1, places[1].Size}; // no "RIFF" there
    places[2] = {end - 3, 4};
    places[3] = {0xffffffff, 0xffffffff};
    for (const bool cancelled : {true, false}) {
        Conversion run(content);
        run.Folder.Write("main.sfx", mainSFX);
        run.Host.OpenAnswers = {cancelled ? "" : run.Folder.File("main.sfx")};
        EXPECT_TRUE(run.Save());
        const auto waves = WavesOf(run.Base());
        EXPECT_EQ(waves.size(), cancelled ? 0 : sounds.size() - 1 - 3);
        if (cancelled)
            continue;
        EXPECT_EQ(waves.at("TR4 Sound 65-0.wav"), sounds[4]);
        EXPECT_EQ(waves.at("TR4 Sound 0-1.wav"), sounds[10]);
        EXPECT_EQ(check::CheckSet(run.Base(), kTR4).Notes, check::Complaints());
        // Of a choice, the sounds of its objects alone come along.
        ObjectChoice choice = ChooseAll(run.Program.Level);
        choice.Moveables.assign(choice.Moveables.size(), false);
        choice.Moveables[0] = true;
        run.Program.Objects = choice;
        run.Host.OpenAnswers = {run.Folder.File("main.sfx")};
        const auto chosen = run.Folder.File("chosen");
        EXPECT_TRUE(SaveLevel(run.Program, chosen + ".was"));
        const auto heard = WavesOf(chosen);
        EXPECT_FALSE(heard.empty());
        EXPECT_LT(heard.size(), waves.size());
        for (const auto& [name, wave] : heard)
            EXPECT_EQ(wave, waves.at(name));
        // What is behind the end of the level's samples, or a few bytes, is no place of one.
        const auto& sfx = run.Program.MainSFX;
        EXPECT_TRUE(sfx.WaveAt(0, end));
        EXPECT_FALSE(sfx.WaveAt(0, end + 1));
        EXPECT_FALSE(sfx.WaveAt(0, 3));
        EXPECT_FALSE(MainSFXState().WaveAt(0, 0));
    }
}

} // namespace

} // namespace morlik::test
