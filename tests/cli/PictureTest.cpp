// The commands that draw, up to the pixels of their files.

#include "base/Text.h"
#include "picture/ContactSheet.h"
#include "picture/Lettering.h"
#include "tests/cli/RunCli.h"
#include "tests/support/Conversion.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>

#ifdef MORLIK_PNG
#include <png.h>
#endif

namespace morlik::test
{

namespace
{

TEST(Lettering, BreaksLinesAtBlanksAndUnderscores)
{
    const std::vector<std::pair<std::string, Strings>> rows{
        {"", {""}},
        {"12345678", {"12345678"}},
        {"1 345678 012", {"1 345678", "012"}},
        {"12 LARA_SKIN", {"12 LARA_", "SKIN"}},
        {"12 LONGLONG_S", {"12", "LONGLONG", "_S"}},
        {"0123456789", {"01234567", "89"}},
    };
    for (const auto& [text, lines] : rows)
        EXPECT_EQ(WrapText(text, 8), lines) << text;
}

/// Every letter shows and has its own shape, inside of its place; nothing is drawn elsewhere.
TEST(Lettering, DrawsEachLetterInItsPlace)
{
    std::vector<std::vector<Colour>> shapes;
    for (char letter = '!'; letter <= '~'; ++letter) {
        Picture picture{.Width = 18, .Height = 30, .Pixels = std::vector<Colour>(540)};
        DrawLine(picture, 6, 10, std::string(1, letter), 1);
        int inside = 0;
        for (std::int32_t y = 10; y < 10 + kLineHeight; ++y)
            for (std::int32_t x = 6; x < 6 + kLetterWidth; ++x)
                inside += picture.Pixels[picture.At(x, y)] != 0 ? 1 : 0;
        EXPECT_GT(inside, 1) << letter;
        EXPECT_EQ(std::accumulate(picture.Pixels.begin(), picture.Pixels.end(), 0U),
                  static_cast<Colour>(inside));
        shapes.push_back(std::move(picture.Pixels));
    }
    std::sort(shapes.begin(), shapes.end());
    EXPECT_EQ(std::adjacent_find(shapes.begin(), shapes.end()), shapes.end());
    Picture small{.Width = 4, .Height = 4, .Pixels = std::vector<Colour>(16)};
    DrawLine(small, -3, -3, "\xe9lsewhere", 1); // what doesn't fit is left out
}

TEST(ContactSheets, HoldPicturesAndWholeLabels)
{
    const SheetLook look{.Columns = 2, .Side = 24, .Background = 1, .Letters = 2};
    const Strings labels{"1 A", "2 LONG_NAMES_WRAP", "3"};
    const auto sheet = MakeContactSheet(labels, look, [](std::size_t number) {
        return Picture{.Width = 24,
                       .Height = 24,
                       .Pixels = std::vector<Colour>(24 * 24, static_cast<Colour>(number) + 100)};
    });
    ASSERT_TRUE(sheet);
    std::vector<std::ptrdiff_t> counts;
    for (const Colour colour : {100U, 101U, 102U})
        counts.push_back(std::count(sheet->Pixels.begin(), sheet->Pixels.end(), colour));
    EXPECT_EQ(counts, std::vector<std::ptrdiff_t>(3, 24 * 24));
    // As much ink as the lines have that stand below the pictures.
    Picture lines{.Width = 100, .Height = 100, .Pixels = std::vector<Colour>(10000)};
    std::int32_t y = 0;
    for (const std::string& label : labels)
        for (const std::string& line : WrapText(label, 24 / kLetterWidth))
            DrawLine(lines, 0, y += kLineHeight, line, 2);
    EXPECT_EQ(std::count(sheet->Pixels.begin(), sheet->Pixels.end(), 2U),
              std::count(lines.Pixels.begin(), lines.Pixels.end(), 2U));
    EXPECT_FALSE(MakeContactSheet(Strings(2000), {.Columns = 1}, {}));
}

#ifdef MORLIK_PNG

Picture ReadPNG(const std::string& path)
{
    const auto file = ReadFile(path);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_memory(&image, file.data(), file.size()), 0) << path;
    image.format = PNG_FORMAT_RGBA;
    Picture picture{.Width = static_cast<std::int32_t>(image.width),
                    .Height = static_cast<std::int32_t>(image.height),
                    .Pixels = {}};
    picture.Pixels.resize(picture.At(0, picture.Height));
    EXPECT_NE(png_image_finish_read(&image, nullptr, picture.Pixels.data(), 0, nullptr), 0);
    return picture;
}

/// A level of Tomb Raider II with its set, which has its sprites.
class PictureCommands : public testing::Test
{
protected:
    PictureCommands()
    {
        Run.CopyDataFiles();
#ifdef _WIN32
        _putenv_s("MORLIK_FOLDER", MORLIK_DATA_FOLDER);
#else
        setenv("MORLIK_FOLDER", MORLIK_DATA_FOLDER, 1); // NOLINT(concurrency-mt-unsafe)
#endif
        WriteWholeFile(Level, WriteLevel(samples::MakeRichLevel(kTR2)).Bytes);
        EXPECT_EQ(RunCli({"convert", Level, "-o", Set, "--export-sprites"}).Status, 0);
    }

    /// Runs a command on a file, with a picture as its output.
    Ran Draw(const std::string& command, const std::string& file, const Strings& options) const
    {
        Strings words{command, file, Out};
        words.insert(words.end(), options.begin(), options.end());
        return RunCli(words);
    }

    Conversion Run;
    std::string Level = Run.Folder.File("level.tr2");
    std::string Set = Run.Folder.File("drawn.was");
    std::string Out = Run.Folder.File("out.png");
};

TEST_F(PictureCommands, DrawTheSameFromALevelAndFromItsSet)
{
    const std::vector<std::pair<std::string, Strings>> rows{
        {"picture", {"--object", "0"}},
        {"picture", {"--object", "0", "--smooth", "--yaw", "200", "--size", "90x70"}},
        {"picture", {"--object", "0", "--wireframe", "--background", "102030"}},
        {"picture", {"--object", "lara", "--animation", "0", "--frame", "1", "--zoom", "3"}},
        {"contact", {"--size", "40", "--columns", "3"}},
        {"contact", {"--sprites"}},
    };
    std::vector<Picture> pictures;
    for (const auto& [command, options] : rows) {
        SCOPED_TRACE(command + " " + options.back());
        EXPECT_EQ(Draw(command, Level, options).Errors, "");
        pictures.push_back(ReadPNG(Out));
        const Ran ofSet = Draw(command, Set, options);
        EXPECT_EQ(ofSet.Status, 0) << ofSet.Errors;
        EXPECT_EQ(ReadPNG(Out).Pixels, pictures.back().Pixels);
        const auto& pixels = pictures.back().Pixels;
        EXPECT_NE(std::count(pixels.begin(), pixels.end(), pixels[0]), std::ssize(pixels));
    }
    EXPECT_EQ(pictures[0].Width, 800);
    EXPECT_EQ(pictures[0].Pixels[0], 0U);
    EXPECT_EQ(pictures[1].Height, 70);
    EXPECT_EQ(pictures[2].Pixels[0], Opaque(0x10, 0x20, 0x30));
}

TEST_F(PictureCommands, TellWhatTheyCannotDraw)
{
    struct Row
    {
        Strings Words; ///< behind the name of the command and the files
        int Status;
        std::string Told;
    };
    const std::vector<Row> rows{
        {{"picture", "--object", "Lora"}, 1, "There is no object \"Lora\"; near: LARA"},
        {{"picture", "--object", "77", "--static"}, 1, "There is no object \"77\""},
        {{"picture", "--object", "0", "--animation", "900"}, 1, "animation 900 of"},
        {{"picture", "--object", "0", "--frame", "9000"}, 1, "frame 9000 of"},
        {{"picture", "--object", "0", "--size", "8193x10"}, 2, "The size must be"},
        {{"picture", "--object", "0", "--size", "10x"}, 2, "The size must be"},
        {{"picture", "--object", "0", "--size", "-5x10"}, 2, "The size must be"},
        {{"picture", "--object", "0", "--background", "red"}, 2, "The background must be"},
        {{"picture", "--object", "0", "--pitch", "91"}, 2, "--pitch"},
        {{"picture"}, 2, "--object is required"},
        {{"contact", "--size", "1024", "--columns", "1"}, 1, "larger than 8192 pixels"},
        {{"contact", "--columns", "0"}, 2, "--columns"},
    };
    for (const auto& [words, status, told] : rows) {
        const Ran ran = Draw(words[0], Level, {words.begin() + 1, words.end()});
        EXPECT_EQ(ran.Status, status) << words.back();
        EXPECT_NE(ran.Errors.find(told), std::string::npos) << told << " in " << ran.Errors;
    }
    EXPECT_FALSE(std::filesystem::exists(ToPath(Out)));
    EXPECT_EQ(RunCli({"contact", Level, Run.Folder.File("out.gif")}).Status, 2);
    EXPECT_EQ(RunCli({"contact", Run.Folder.File("none.tr2"), Out}).Status, 1);
    EXPECT_EQ(RunCli({"contact", Run.Folder.File("none.was"), Out}).Status, 1);
    std::filesystem::copy_file(ToPath(Level), ToPath(Out));
    EXPECT_EQ(RunCli({"contact", Out, Out}).Status, 2) << "an output in the place of the input";
}

/// Sets with changed words in all their tables: at worst there is a message, and a contact sheet
/// shows what is left.
TEST_F(PictureCommands, LeaveOutWhatIsDamaged)
{
    const auto wad = ReadFile(Run.Folder.File("drawn.wad"));
    const auto swd = ReadFile(Run.Folder.File("drawn.swd"));
    std::uint32_t random = 1;
    int failed = 0;
    for (int round = 0; round < 40; ++round) {
        for (const auto& [name, whole] :
             {std::pair{"drawn.wad", wad}, std::pair{"drawn.swd", swd}}) {
            auto bytes = whole;
            for (int change = 0; change < 30; ++change) {
                random = random * 1664525U + 1013904223U;
                bytes[bytes.size() - 1 -
                      (random >> 8U) % std::min(bytes.size(), std::size_t{40000})] =
                    static_cast<std::byte>(random >> 24U);
            }
            WriteWholeFile(Run.Folder.File(name), bytes);
        }
        const Ran ran = Draw("contact", Set, {"--size", "16"});
        failed += ran.Status;
        EXPECT_EQ(ran.Errors.empty(), ran.Status == 0);
    }
    EXPECT_GT(failed, 10);
    EXPECT_TRUE(std::filesystem::exists(ToPath(Out)));
}

#endif

} // namespace

} // namespace morlik::test
