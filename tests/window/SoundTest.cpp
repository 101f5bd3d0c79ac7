// The sound list: what of a sound is shown, and how it is played.

#include "playback/Decode.h"
#include "tests/support/WaveFile.h"
#include "tests/window/DiskSound.h"
#include "tests/window/WindowRun.h"

namespace morlik::test
{

namespace
{

void Select(WindowRun& run, int row)
{
    auto* list = run.Find<QListWidget>("SndLst");
    list->setCurrentRow(row);
    list->setFocus();
}

bool IsPlaying(WindowRun& run)
{
    return run.Find<QTimer>("SndTimer")->isActive();
}

/// A level whose sounds are a step from the lowest to the highest value, one of ADPCM, one that is
/// no WAV file, and one without a sample.
samples::LevelContent LevelWithOddSounds()
{
    auto level = samples::MakeRichLevel(kTR4);
    WaveFile square{.BlockBytes = 1, .Bits = 8, .Data = std::vector<std::uint8_t>(20000, 255)};
    std::fill_n(square.Data.begin(), 10000, std::uint8_t{0});
    level.Samples[0] = square.Bytes();
    level.Samples[1] = MakeADPCM().Bytes();
    level.Samples[2] = std::vector<std::byte>(50);
    level.Samples[3] = {};
    return level;
}

TEST(WindowSounds, ASelectedSoundShowsItsWaveAndWhatItIs)
{
    WindowRun run(LevelWithOddSounds());
    auto* wave = run.Find<QWidget>("SndWave");
    Select(run, 0);
    EXPECT_EQ(run.Label("SndText"), "22050 Hz, 8 bits, mono, 0.91 s");
    const auto picture = wave->grab().toImage();
    const auto isDrawn = [&](int x, int y) {
        return picture.pixel(x, y) != wave->palette().color(QPalette::Base).rgb();
    };
    const int bottom = picture.height() - 1;
    for (const int x : {0, picture.width() / 4, picture.width() * 3 / 4, picture.width() - 1})
        for (const int y : {0, bottom / 2, bottom})
            EXPECT_EQ(isDrawn(x, y), y == (x < picture.width() / 2 ? bottom : 0)) << x << ' ' << y;
    const int step = (picture.width() - 1) / 2;
    EXPECT_TRUE(isDrawn(step, bottom / 2));
    Select(run, 1);
    EXPECT_EQ(run.Label("SndText"), "22050 Hz, 4 bits (ADPCM), mono, 0.00 s");
    Select(run, 2);
    EXPECT_EQ(run.Label("SndText"), "It can't be played.");
    EXPECT_NE(wave->grab().toImage(), picture);
    QTest::keyClick(run.Find<QListWidget>("SndLst"), Qt::Key_Space);
    EXPECT_EQ(run.Told(),
              "The sample can't be played: head of a WAV file, offset 8: it is no WAV file");
    Select(run, 3);
    EXPECT_EQ(run.Label("SndText"), "");
    QTest::keyClick(run.Find<QListWidget>("SndLst"), Qt::Key_Space);
    EXPECT_EQ(run.Label("Foot"), "The sound has no sample.");
    Select(run, 0);
    run.Find<QLineEdit>("SndFilter")->setText("none such");
    EXPECT_EQ(run.Label("SndText"), ""); // what can't be seen is not to be played
    QTest::keyClick(run.Find<QListWidget>("SndLst"), Qt::Key_Space);
    EXPECT_EQ(run.Host.Beeps, 1);
}

TEST(WindowSounds, KeysAndADoubleClickPlayThem)
{
    const DiskSound disk;
    WindowRun run(LevelWithOddSounds());
    auto* list = run.Find<QListWidget>("SndLst");
    auto* wave = run.Find<QWidget>("SndWave");
    Select(run, 0);
    const auto atRest = wave->grab().toImage();
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_TRUE(IsPlaying(run));
    WaitUntil([&] { return wave->grab().toImage() != atRest; });
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(IsPlaying(run));
    EXPECT_EQ(wave->grab().toImage(), atRest);

    run.ClickRow(list, 1);
    EXPECT_FALSE(IsPlaying(run));
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                       list->visualItemRect(list->item(1)).center());
    WaitUntil([&] { return !IsPlaying(run) && disk.Holds(kADPCMValues); });

    // Of main.sfx too; another sound, or another file, ends the one before.
    const auto sounds = samples::SampleSounds();
    Select(run, 0);
    QTest::keyClick(list, Qt::Key_Space);
    run.Open(run.Write(MainSfxFile(), "main.sfx"));
    EXPECT_FALSE(IsPlaying(run));
    EXPECT_EQ(run.Label("SndText"), "");
    Select(run, 7);
    QTest::keyClick(list, Qt::Key_Space);
    WaitUntil([&] { return disk.Holds(Decode(sounds[7]).Values); });
    EXPECT_EQ(run.Label("Foot"), "");
    Select(run, 8);
    QTest::keyClick(list, Qt::Key_Space);
    Select(run, 9);
    EXPECT_FALSE(IsPlaying(run));
}

} // namespace

} // namespace morlik::test
