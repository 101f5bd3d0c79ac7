#include "audio/AnimationSounds.h"
#include "audio/PlainWave.h"
#include "audio/WaveInfo.h"
#include "convert/ConvertLevel.h"
#include "tests/support/Conversion.h"
#include "tests/support/WaveFile.h"

namespace morlik::test
{

TEST(WaveInfo, TellsTheSoundOrWhyItIsNone)
{
    const std::vector<std::uint8_t> second(22050);
    auto odd = MakeADPCM();
    odd.Channels = 3;
    auto longer = MakeADPCM();
    longer.Data.resize(35); // three blocks and a part
    auto damaged = longer;
    damaged.Data[9] = 7; // there are seven predictors
    const std::vector<std::pair<WaveFile, std::string>> rows{
        {{.BlockBytes = 1, .Bits = 8, .Data = second}, "22050 Hz, 8 bits, mono, 1.00 s"},
        {{.Data = second}, "22050 Hz, 16 bits, mono, 0.50 s"},
        {{.Data = second, .FurtherBytes = 1000}, "22050 Hz, 16 bits, mono, 0.50 s"},
        {{.Channels = 2, .Rate = 11025, .BlockBytes = 4, .Data = second},
         "11025 Hz, 16 bits, stereo, 0.50 s"},
        {longer, "22050 Hz, 4 bits (ADPCM), mono, 0.00 s"},
        {damaged, "its block 1 is damaged"},
        {odd, "3 channels are not played"},
        {{.Channels = 0, .Data = second}, "0 channels are not played"},
        {{.Rate = 192001, .Data = second}, "a rate of 192001 Hz is not played"},
        {{.Coding = 2, .Bits = 8}, "coding 2 with 8 bits is not played"},
        {{.Rate = 999, .Data = second}, "a rate of 999 Hz is not played"},
        {{.Bits = 12, .Data = second}, "coding 1 with 12 bits is not played"},
        {{.Coding = 85, .Data = second}, "coding 85 with 16 bits is not played"},
        {{.BlockBytes = 0, .Data = second}, "its blocks have no bytes"},
        {{.Data = {1}, .FurtherBytes = 1}, "there is none"},
    };
    for (const auto& [wave, expected] : rows) {
        std::string text;
        const auto end = MessageOf<ReadFailure>(
            [&, &made = wave] { text = Describe(ReadWaveInfo(made.Bytes())); });
        EXPECT_TRUE(text == expected || end.ends_with(": " + expected)) << text << end;
    }
    EXPECT_EQ(ReadWaveInfo(longer.Bytes()).Frames, 18);
    const auto whole = MakeADPCM().Bytes();
    for (std::size_t size = 0; size < whole.size(); ++size) // its one block needs all of it
        EXPECT_THROW(ReadWaveInfo(std::span(whole).first(size)), ReadFailure) << size;
}

TEST(PlainWave, ExpandsADPCMAlone)
{
    const auto expanded = PlainWave(MakeADPCM().Bytes());
    EXPECT_EQ(Describe(ReadWaveInfo(expanded)), "22050 Hz, 16 bits, mono, 0.00 s");
    EXPECT_TRUE(
        std::ranges::equal(ReadWaveInfo(expanded).Data, std::as_bytes(std::span(kADPCMValues))));
    const auto plain = WaveFile{.Data = {1, 0, 2, 0}}.Bytes();
    EXPECT_EQ(PlainWave(plain), plain);
    auto wide = MakeADPCM();
    wide.BlockFrames = 60000;
    EXPECT_THROW(PlainWave(wide.Bytes()), ReadFailure);
    auto second = MakeADPCM();
    second.Channels = 2; // whose block then is too short for two heads
    EXPECT_THROW(PlainWave(second.Bytes()), ReadFailure);
}

TEST(AnimationSounds, AreThoseOfTheCommandsInAllGames)
{
    for (const VersionCode game : kGames) {
        Conversion run(samples::MakeRichLevel(game));
        LevelData& level = run.Program.Level;
        const auto walk = static_cast<std::size_t>(
            std::ranges::find(level.Animations, 6, &Animation::NumAnimCommands) -
            level.Animations.begin());
        MainSFXState& sfx = run.Program.MainSFX;
        if (HasMainSFX(game)) {
            EXPECT_TRUE(SoundsOfAnimation(level, sfx, walk).empty());
            const auto mainSFX = run.Folder.Write("main.sfx", MainSfxFile());
            ASSERT_TRUE(ReadMainSFX(mainSFX, sfx, run.Program.Report));
        }
        // The third command now says that its sound is made in the water, and of one in none.
        const auto first = static_cast<std::size_t>(level.Animations[walk].AnimCommand);
        level.AnimCommands[first + 5] = Word(level.AnimCommands[first + 2] | 0x8000);
        auto sounds = SoundsOfAnimation(level, sfx, walk);
        ASSERT_EQ(sounds.size(), 2);
        EXPECT_EQ(sounds[0].Frame, 32);
        EXPECT_EQ(sounds[1].Frame, 40);
        EXPECT_EQ(sounds[0].Place, SoundPlace::Everywhere);
        EXPECT_EQ(sounds[1].Place, SoundPlace::InWater);
        const auto waves = samples::SampleSounds();
        for (const SoundAt& sound : sounds) {
            EXPECT_EQ(sound.Sound, 17);
            ASSERT_EQ(sound.Samples.size(), 4);
            for (std::size_t k = 0; k < sound.Samples.size(); ++k)
                EXPECT_TRUE(std::ranges::equal(
                    sound.Samples[k], waves.at(HasMainSFX(game) ? (k * 5 + 1) % waves.size() : k)));
        }
        if (samples::IsFirstGame(game)) { // its sets have the samples with them
            const auto set = ConvertLevel(level, run.Program.Names, "", {}, run.Program.Report);
            const auto ofSet = SoundsOfAnimation(set.value(), walk);
            ASSERT_EQ(ofSet.size(), 2);
            for (std::size_t k = 0; k < 4; ++k)
                EXPECT_TRUE(std::ranges::equal(ofSet[1].Samples.at(k), waves[k]));
            EXPECT_TRUE(SoundsOfAnimation(set.value(), level.Animations.size()).empty());
        }
        level.AnimCommands[first + 5] = Word(level.AnimCommands[first + 2] | 0x4000);
        EXPECT_EQ(SoundsOfAnimation(level, sfx, walk)[1].Place, SoundPlace::OnLand);
        level.AnimCommands[first + 2] = 18; // which has no samples
        EXPECT_EQ(SoundsOfAnimation(level, sfx, walk).size(), 1);
        level.AnimCommands[first] = 9;
        EXPECT_TRUE(SoundsOfAnimation(level, sfx, walk).empty());
        EXPECT_TRUE(SoundsOfAnimation(level, sfx, level.Animations.size()).empty());
    }
}

} // namespace morlik::test
