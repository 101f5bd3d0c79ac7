// Sounds decoded and played: what SDL's drivers for a file, for nothing and for no device get.

#include "audio/PlainWave.h"
#include "base/Files.h"
#include "playback/AnimationPlayer.h"
#include "playback/Decode.h"
#include "playback/Player.h"
#include "tests/support/Conversion.h"
#include "tests/support/RealLevels.h"
#include "tests/support/WaveFile.h"
#include "tests/window/DiskSound.h"

namespace morlik::test
{

TEST(Decode, GivesTheValuesOfEachCoding)
{
    using Values = std::vector<std::int16_t>;
    const std::vector<std::pair<WaveFile, Values>> rows{
        {{.BlockBytes = 1, .Bits = 8, .Data = {0, 1, 128, 255}}, {-32768, -32512, 0, 32512}},
        {{.Channels = 2, .BlockBytes = 4, .Data = {1, 0, 0, 0x80, 0xff, 0xff, 2, 1}},
         {1, -32768, -1, 258}},
        {{.Data = {1, 0, 2, 0, 3}, .FurtherBytes = 99}, {1, 2}},
        {MakeADPCM(), kADPCMValues},
    };
    for (const auto& [file, values] : rows) {
        const auto wave = Decode(file.Bytes());
        EXPECT_EQ(wave.Values, values);
        EXPECT_EQ(wave.Rate, 22050);
        EXPECT_EQ(wave.Channels, file.Channels);
    }
    auto wide = MakeADPCM();
    wide.BlockFrames = 60000;
    for (const auto& file : {wide.Bytes(), std::vector<std::byte>(kMostPlayedBytes + 1)})
        EXPECT_THROW(Decode(file), ReadFailure);
}

TEST(Decode, TakesAllSamplesOfRealLevels)
{
    for (const char* below : {"", "modern", "extended"})
        for (const auto& path : RealLevels(below)) {
            Conversion run;
            LoadLevel(run.Program, path);
            for (const Sample& sample : run.Program.Level.Samples) {
                if (sample.Data.empty())
                    continue;
                const DecodedWave wave = Decode(sample.Data);
                EXPECT_EQ(wave.Frames(), ReadWaveInfo(sample.Data).Frames) << path;
                EXPECT_EQ(Decode(PlainWave(sample.Data)).Values, wave.Values) << path;
            }
        }
}

TEST(Player, TheDeviceGetsTheSampleAsItIs)
{
    const DiskSound disk;
    const auto player = MakePlayer();
    DecodedWave wave{22050, 1, {}};
    for (int i = 0; i < 3000; ++i)
        wave.Values.push_back(static_cast<std::int16_t>(i * 7919 + 1));
    ASSERT_TRUE(player->Play(wave)) << player->Error();
    ASSERT_TRUE(player->Place());
    WaitUntil([&] { return disk.Holds(wave.Values); });
    EXPECT_FALSE(player->Place());

    // Of a long sound only the beginning, where another one takes its place or it is stopped.
    const DecodedWave endless{22050, 1, std::vector<std::int16_t>(22050 * 60, 1234)};
    ASSERT_TRUE(player->Play(endless));
    WaitUntil([&] { return player->Place().value_or(0) > 0; });
    EXPECT_LT(player->Place().value(), 30);

    // Another form, and a second sound on top, which is as loud as can be.
    const DecodedWave loud{44100, 2, std::vector<std::int16_t>(2000, 30000)};
    const DecodedWave more{44100, 2, std::vector<std::int16_t>(5000, 20000)};
    ASSERT_TRUE(player->Play(loud));
    ASSERT_TRUE(player->PlayBeside(more));
    WaitUntil([&] { return disk.Holds(std::vector<std::int16_t>(3000, 20000)); });
    EXPECT_TRUE(disk.Holds(std::vector<std::int16_t>(1000, 32767)));
    // One of a single channel beside one of two, of whose values each comes twice.
    ASSERT_TRUE(player->Play({44100, 2, std::vector<std::int16_t>(88200, 30000)}));
    ASSERT_TRUE(player->PlayBeside({44100, 1, std::vector<std::int16_t>(2500, 20000)}));
    WaitUntil([&] { return disk.Holds(std::vector<std::int16_t>(4500, 32767)); });
    ASSERT_TRUE(player->Play(endless));
    player->Stop();
    EXPECT_FALSE(player->Place());
}

TEST(AnimationPlayer, PlaysTheSoundsOfTheFramesThatPass)
{
    using Values = std::vector<std::int16_t>;
    const auto wave = [](std::uint8_t value) {
        return WaveFile{.Data = std::vector<std::uint8_t>(2000, value)}.Bytes();
    };
    const auto low = wave(1);
    const auto middle = wave(2);
    const auto water = wave(4);
    const auto damaged = WaveFile{}.Bytes();
    std::vector<SoundAt> sounds{{30, 1, SoundPlace::Everywhere, {low}},
                                {34, 2, SoundPlace::OnLand, {middle}},
                                {34, 3, SoundPlace::InWater, {water}},
                                {34, 4, SoundPlace::OnLand, {damaged}}};
    const DiskSound disk;
    AnimationPlayer player;
    player.Take(sounds);
    EXPECT_TRUE(player.Pass(30, 33)); // the first is over, the others to come
    EXPECT_TRUE(player.Pass(33, 34));
    WaitUntil([&] { return disk.Holds(Values(1000, 0x0202)); });
    EXPECT_TRUE(player.Pass(29, 34));
    WaitUntil([&] { return disk.Holds(Values(1000, 0x0303)); });
    sounds.erase(sounds.begin() + 1);
    sounds.pop_back();
    player.Take(sounds); // of an animation in the water
    EXPECT_TRUE(player.Pass(29, 34));
    WaitUntil([&] { return disk.Holds(Values(1000, 0x0505)); });
}

TEST(Player, TellsWhyThereIsNoSound)
{
    const DecodedWave wave{22050, 1, std::vector<std::int16_t>(100)};
    qputenv("SDL_AUDIODRIVER", "none such");
    const auto player = MakePlayer();
    EXPECT_FALSE(player->Play(wave));
    EXPECT_EQ(player->Error(), "Audio target 'none such' not available");
    EXPECT_FALSE(player->Place());
    player->Stop();
    qputenv("SDL_AUDIODRIVER", "dummy"); // somebody has plugged in one
    EXPECT_TRUE(player->Play(wave));
    EXPECT_EQ(player->Error(), "");
}

} // namespace morlik::test
