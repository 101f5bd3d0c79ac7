#include "picture/TGA_Mod.h"

#include "base/Narrow.h"
#include "base/OutputFile.h"
#include "convert/Pixels.h"

#include <algorithm>
#include <limits>

namespace morlik
{

namespace
{

constexpr std::int32_t kBumpRows = 128; ///< rows of the sheet for a bump tile
constexpr std::int32_t kRowsPerTurn = 10;

struct TgaHeader
{
    std::uint8_t IDLength = 0;
    std::uint8_t ColourMapType = 0;
    std::uint8_t ImageType = 2; ///< true colour, uncompressed
    std::array<std::uint8_t, 5> ColourMap{};
    std::int16_t XOrigin = 0;
    std::int16_t YOrigin = 0;
    std::int16_t Width = kTileSide;
    std::int16_t Height = 0;
    std::uint8_t PixelDepth = 24;
    std::uint8_t Descriptor = 0; ///< rows from the bottom upwards
};
static_assert(sizeof(TgaHeader) == 18);

/// A stretch of level rows that the sheet shows upright.
struct SheetPart
{
    std::int64_t FirstRow; ///< topmost row, in the level
    std::int32_t NumRows;
};

/// The parts of the sheet in file order, which is from the bottom upwards.
std::array<SheetPart, 2> PartsOf(const LevelData& level)
{
    const std::int16_t roomTiles = CountRoomTiles(level);
    const std::int64_t bumpTile = std::int64_t{roomTiles} + level.NumObjectTiles;
    return {{{0, roomTiles * kTileSide}, {bumpTile * kTileSide, level.NumBumpTiles * kBumpRows}}};
}

/// Whether the height of the sheet can stand in its signed 16-bit word.
bool Fits(const std::array<SheetPart, 2>& parts)
{
    const auto [room, bump] = parts;
    return room.NumRows >= 0 && bump.NumRows >= 0 &&
           room.NumRows + bump.NumRows <= std::numeric_limits<std::int16_t>::max();
}

/// Shows the progress of a sheet in the window's caption; the caption comes back at the end.
class CaptionProgress
{
public:
    CaptionProgress(Host& host, VersionCode version, std::int32_t height)
        : host_(host), caption_(host.Caption()), isShown_(version != kTR1)
    {
        // Sheets of Tomb Raider II and III count up to the last row, those of IV and V up to the
        // height.
        percentPerRow_ = 100.0 / (IsOlderGame(version) ? height - 1 : height);
    }
    CaptionProgress(const CaptionProgress&) = delete;
    CaptionProgress& operator=(const CaptionProgress&) = delete;
    ~CaptionProgress() { host_.SetCaption(caption_); }

    /// `row` is the number of a finished row in the file.
    void Show(std::int32_t row)
    {
        if (!isShown_)
            return;
        const auto percent = static_cast<std::int32_t>(row * percentPerRow_);
        host_.SetCaption("Saving TGA -" + std::to_string(percent) + "%");
        host_.GiveTurn();
    }

private:
    Host& host_;
    std::string caption_;
    bool isShown_;
    double percentPerRow_ = 0;
};

/// Raises `highest` to the highest tile of the textured faces.
template <std::size_t Corners>
void RaiseToTiles(std::int32_t& highest, const std::vector<RoomFace<Corners>>& faces,
                  const std::vector<LevelTexture>& textures)
{
    for (const auto& face : faces)
        if (face.Texture > 0 && static_cast<std::size_t>(face.Texture) < textures.size())
            highest = std::max<std::int32_t>(
                highest, textures[static_cast<std::size_t>(face.Texture)].Info.Tile);
}

} // namespace

std::int16_t CountRoomTiles(const LevelData& level)
{
    if (!IsOlderGame(level.Version))
        return level.NumRoomTiles;
    std::int32_t highest = 0;
    for (const Room& room : level.Rooms) {
        RaiseToTiles(highest, room.Rectangles, level.Textures);
        RaiseToTiles(highest, room.Triangles, level.Textures);
    }
    return Word(highest + 1);
}

bool SheetFits(const LevelData& level, Reporter& report)
{
    if (Fits(PartsOf(level)))
        return true;
    report.Message(std::to_string(CountRoomTiles(level)) + " room tiles and " +
                   std::to_string(level.NumBumpTiles) +
                   " bump tiles don't fit in a TGA file - nothing was saved!");
    return false;
}

std::vector<std::byte> SheetRows(const LevelData& level, Host& host)
{
    const auto parts = PartsOf(level);
    const std::int32_t height = parts[0].NumRows + parts[1].NumRows;
    CaptionProgress progress(host, level.Version, height);
    const PixelConverter converter(level, PixelOrder::Bgr);
    std::vector<std::byte> rows(narrow<std::size_t>(height) * kRowBytes);
    std::byte* out = rows.data();
    std::int32_t row = 0;
    for (const SheetPart& part : parts)
        for (std::int32_t i = 0; i < part.NumRows; ++i, ++row, out += kRowBytes) {
            converter.ConvertRow(part.FirstRow + part.NumRows - 1 - i, out);
            if (i % kRowsPerTurn == 0)
                progress.Show(row);
        }
    return rows;
}

bool SaveTGA(const std::string& fileName, const LevelData& level, Reporter& report)
{
    if (!SheetFits(level, report))
        return false;
    try {
        const auto parts = PartsOf(level);
        NewFile file(fileName);
        file.File().Put(TgaHeader{.Height = Word(parts[0].NumRows + parts[1].NumRows)});
        file.File().PutBytes(SheetRows(level, report.TheHost()));
        file.TakePlace();
        return true;
    } catch (const FileFailure& failure) {
        report.Message(failure.what());
        return false;
    }
}

} // namespace morlik
