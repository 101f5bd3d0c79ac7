// The commands that draw, up to the pixels of their files.

#include "picture/ContactSheet.h"
#include "picture/Lettering.h"
#include "picture/MovingFile.h"
#include "set/ReadSet.h"
#include "tests/cli/RunCli.h"
#include "tests/model/MadeSet.h"

#include <functional>
#include <numeric>
#include <random>

#ifdef MORLIK_PNG
#include "tests/support/ReadPng.h"

#include <zlib.h>
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

TEST(ContactSheets, AreAsWideAsAPictureMayBe)
{
    for (const int columns : {248, 249}) { // as wide as a picture may be, and one too many
        const Picture picture{.Width = 25, .Height = 25, .Pixels = std::vector<Colour>(625)};
        const auto made = MakeContactSheet(Strings(static_cast<std::size_t>(columns)),
                                           {.Columns = columns, .Side = 25},
                                           [&](std::size_t) { return picture; });
        EXPECT_EQ(made ? made->Width : 0, columns == 248 ? kMostPictureSide : 0);
    }
}

#ifdef MORLIK_PNG

using Bytes = std::vector<std::byte>;

std::uint32_t BigEndian(std::span<const std::byte> bytes, std::size_t at, std::size_t size = 4)
{
    std::uint32_t value = 0;
    for (const std::byte byte : bytes.subspan(at, size))
        value = value << 8U | std::to_integer<std::uint32_t>(byte);
    return value;
}

void PutChunk(Bytes& file, const std::string& name, std::span<const std::byte> data)
{
    for (const std::size_t shift : {24U, 16U, 8U, 0U})
        file.push_back(static_cast<std::byte>(data.size() >> shift));
    const auto letters = std::as_bytes(std::span(name));
    file.insert(file.end(), letters.begin(), letters.end());
    file.insert(file.end(), data.begin(), data.end());
    const auto crc =
        crc32(crc32(0, reinterpret_cast<const Bytef*>(name.data()), 4),
              reinterpret_cast<const Bytef*>(data.data()), static_cast<uInt>(data.size()));
    for (const std::size_t shift : {24U, 16U, 8U, 0U})
        file.push_back(static_cast<std::byte>(crc >> shift));
}

/// The pictures of an animated PNG file, as a program shows them that knows such files: each a PNG
/// file of its own, made of its chunks, over the one before it.
std::vector<Picture> ReadAnimatedPNG(const std::string& path)
{
    const Bytes file = ReadFile(path);
    std::vector<Bytes> parts;
    std::vector<Bytes> controls;
    Bytes head;
    std::uint32_t number = 0;
    std::uint32_t count = 0;
    for (std::size_t at = 8; at < file.size();) {
        const std::size_t size = BigEndian(file, at);
        const std::string name(reinterpret_cast<const char*>(file.data()) + at + 4, 4);
        const auto data = std::span(file).subspan(at + 8, size);
        Bytes again;
        PutChunk(again, name, data);
        EXPECT_TRUE(std::ranges::equal(again, std::span(file).subspan(at, size + 12))) << "CRC";
        if (name == "IHDR")
            head.assign(data.begin(), data.end());
        if (name == "acTL") {
            count = BigEndian(data, 0);
            EXPECT_EQ(BigEndian(data, 4), 0U) << "endless";
        }
        if (name == "fcTL") {
            controls.emplace_back(data.begin(), data.end());
            std::ranges::copy(data.subspan(4, 8), head.begin()); // the size of this picture
            parts.emplace_back(file.begin(), file.begin() + 8);
            PutChunk(parts.back(), "IHDR", head);
        }
        if (name == "fcTL" || name == "fdAT") {
            EXPECT_EQ(BigEndian(data, 0), number++);
        }
        if (name == "IDAT" || name == "fdAT")
            PutChunk(parts.back(), "IDAT", data.subspan(name == "fdAT" ? 4 : 0));
        at += size + 12;
    }
    EXPECT_EQ(parts.size(), count);
    std::vector<Picture> pictures;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        PutChunk(parts[i], "IEND", {});
        const Picture part = DecodePNG(parts[i]);
        const auto field = [&](std::size_t n) {
            return static_cast<std::int32_t>(BigEndian(controls[i], n));
        };
        EXPECT_EQ(BigEndian(controls[i], 20), (1U << 16U) + 30) << "1/30 s";
        EXPECT_EQ(BigEndian(controls[i], 24, 2), 0U) << "it stays, and takes the place";
        Picture shown = i == 0 ? part : pictures.back();
        for (std::int32_t y = 0; y < part.Height; ++y)
            for (std::int32_t x = 0; x < part.Width; ++x)
                shown.Pixels.at(shown.At(field(12) + x, field(16) + y)) =
                    part.Pixels[part.At(x, y)];
        pictures.push_back(std::move(shown));
    }
    return pictures;
}

/// How long each picture of a WebP file is shown, in milliseconds; none of a still one.
std::vector<std::size_t> WebPDurations(const std::string& path)
{
    const Bytes file = ReadFile(path);
    std::vector<std::size_t> durations;
    const Bytes turned(file.rbegin(), file.rend()); // its numbers begin with their least byte
    const auto number = [&](std::size_t at, std::size_t size) {
        return std::size_t{BigEndian(turned, file.size() - at - size, size)};
    };
    EXPECT_EQ(number(4, 4), file.size() - 8);
    for (std::size_t at = 12; at < file.size(); at += 8 + (number(at + 4, 4) + 1) / 2 * 2)
        if (std::string(reinterpret_cast<const char*>(file.data()) + at, 4) == "ANMF")
            durations.push_back(number(at + 8 + 12, 3));
    return durations;
}

TEST(AnimatedPNGs, HoldEachPictureWhole)
{
    const TempFolder folder;
    Picture picture{.Width = 5, .Height = 4, .Pixels = std::vector<Colour>(20, kOpaque)};
    std::vector<Picture> pictures{picture};
    for (const auto& [x, y, colour] : std::vector<std::array<Colour, 3>>{
             {4, 3, 0}, {0, 0, Opaque(1, 2, 3)}, {0, 0, Opaque(1, 2, 3)}, {2, 1, 0x80000001}}) {
        picture.Pixels[picture.At(static_cast<std::int32_t>(x), static_cast<std::int32_t>(y))] =
            colour;
        pictures.push_back(picture);
    }
    const auto file = NewAnimatedPNG(folder.File("a.png"), pictures.size());
    for (const Picture& each : pictures)
        file->Add(each);
    EXPECT_FALSE(std::filesystem::exists(ToPath(folder.File("a.png")))) << "it isn't whole";
    file->TakePlace();
    const auto read = ReadAnimatedPNG(folder.File("a.png"));
    ASSERT_EQ(read.size(), pictures.size());
    for (std::size_t i = 0; i < read.size(); ++i)
        EXPECT_EQ(read[i].Pixels, pictures[i].Pixels) << i;
    // What flickers all over is bounded by its pixels, noise by the bytes of its file.
    picture = {.Width = 2048, .Height = 2048, .Pixels = std::vector<Colour>(std::size_t{1} << 22U)};
    std::mt19937 random; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same each time
    for (const auto& [isNoise, good, told] :
         {std::tuple{false, 16, "pixels change"}, {true, 3, "takes more than 64 MiB"}}) {
        const auto endless = NewAnimatedPNG(folder.File("b.png"), 99);
        for (int i = 0; i <= good; ++i) {
            for (Colour& pixel : picture.Pixels)
                pixel = isNoise ? static_cast<Colour>(random()) : static_cast<Colour>(i);
            ExpectFailure(i == good ? told : "", [&] { endless->Add(picture); });
        }
    }
}

/// All frames are there, each inside of the picture and together filling it; a single one is a
/// still picture.
TEST_F(CliTest, AnimatesAllFramesInOneFrame)
{
    Expect(0, "convert %2 -o %drawn.was");
    const std::string options = " --object LARA --size 60x50 --animation 1";
    Expect(0, "animate %2 %out.png" + options);
    const auto frames = ReadAnimatedPNG(File("out.png"));
    const auto bytes = Read("out.png");
    const Animation record = ReadSet(File("drawn.was")).Animations[1];
    ASSERT_GT(record.FrameRate, 1);
    ASSERT_EQ(std::ssize(frames), record.FrameEnd - record.FrameStart + 1);
    Picture all = frames[0];
    for (std::size_t i = 1; i < frames.size(); ++i) {
        EXPECT_NE(frames[i].Pixels, frames[i - 1].Pixels) << i;
        std::ranges::transform(all.Pixels, frames[i].Pixels, all.Pixels.begin(), std::bit_or());
    }
    const auto isUsed = [&](std::int32_t row) {
        return std::any_of(all.Pixels.begin() + row * 60, all.Pixels.begin() + (row + 1) * 60,
                           [](Colour pixel) { return pixel != 0; });
    };
    EXPECT_FALSE(isUsed(0) || isUsed(49));
    EXPECT_TRUE(isUsed(4) || isUsed(45));
    Expect(0, "animate %drawn.was %out.png" + options);
    EXPECT_EQ(Read("out.png"), bytes);
    if (HasWebP()) {
        Expect(0, "animate %2 %out.webp" + options);
        const auto durations = WebPDurations(File("out.webp"));
        EXPECT_EQ(durations.size(), frames.size());
        EXPECT_EQ(std::accumulate(durations.begin(), durations.end(), std::size_t{0}),
                  (frames.size() * 1000 + 15) / 30);
        Expect(0, "animate %2 %out.webp --object 171");
        EXPECT_TRUE(WebPDurations(File("out.webp")).empty());
    }
    Expect(0, "animate %2 %out.png --object 171");
    const auto still = Read("out.png");
    EXPECT_EQ(DecodePNG(still).Height, 300);
    const std::string text(reinterpret_cast<const char*>(still.data()), still.size());
    EXPECT_EQ(text.find("acTL"), std::string::npos);
}

#endif

} // namespace

} // namespace morlik::test
