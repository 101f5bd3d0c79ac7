#include "level/ConvertFractional.h"

#include "level/Orientation.h"
#include "level/SharedBoxes.h"
#include "level/TextureCorners.h"

namespace morlik
{

namespace
{

/// Places one texture on its box; gives whether its shape had to be simplified.
bool Place(const std::array<TextureCorner, 4>& corners, bool triangle, LevelTexture& made)
{
    const auto used = std::span<const TextureCorner>(corners).first(triangle ? 3 : 4);
    const PixelBox box = BoxOf(used);
    const Orientation orientation = OrientationOf(used, box);
    made.Info.X = box.Left;
    made.Info.Y = box.Top;
    made.Info.Width = static_cast<std::uint8_t>(box.Right - box.Left);
    made.Info.Height = static_cast<std::uint8_t>(box.Bottom - box.Top);
    made.TextureFlip = orientation.Code;
    made.TextureTurn = orientation.Turn;
    return orientation.Simplified;
}

/// Tomb Raider I to III: every texture stands for itself.
std::size_t ConvertTR123(LevelData& level, const TrMainState& state)
{
    std::size_t simplified = 0;
    for (const ObjectTexture& texture : state.ObjectTextures) {
        const auto number = static_cast<std::int32_t>(level.Textures.size());
        const bool triangle = IsTriangle(texture);
        LevelTexture& made = level.Textures.emplace_back();
        simplified += Place(texture.Corners, triangle, made) ? 1U : 0U;
        made.Info.FlipX = made.Info.FlipY = triangle ? 0 : TextInfo::kFlipMark;
        made.Info.Tile = texture.Tile;
        made.Attribute = texture.Attribute;
        made.TextureRemap = number;
    }
    return simplified;
}

std::size_t ConvertTR45(LevelData& level, const TrMainState& state, Reporter& report)
{
    std::size_t simplified = 0;
    SharedBoxes boxes(level, report);
    for (const ObjectTextureTR45& texture : state.ObjectTexturesTR45) {
        const auto number = static_cast<std::int32_t>(level.Textures.size());
        LevelTexture& made = level.Textures.emplace_back();
        simplified += Place(texture.Corners, IsTriangle(texture), made) ? 1U : 0U;
        made.Info.FlipX = made.Info.FlipY = TextInfo::kFlipMark;
        made.Info.Tile = TileOf(texture);
        made.Attribute = texture.Attribute;
        made.TextureRemap = boxes.FirstWith(made.Info, number);
    }
    return simplified;
}

} // namespace

void ConvertFractional(LevelData& level, const TrMainState& state, Reporter& report)
{
    level.Textures.reserve(static_cast<std::size_t>(level.NumTextInfo));
    const auto simplified = IsOlderGame(state.LevelVersion) ? ConvertTR123(level, state)
                                                            : ConvertTR45(level, state, report);
    if (simplified != 0)
        report.LogLine(std::to_string(simplified) + " textures simplified");
}

} // namespace morlik
