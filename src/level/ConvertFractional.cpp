#include "level/ConvertFractional.h"

#include "level/SharedBoxes.h"
#include "level/TextureCorners.h"
#include "level/TextureLayout.h"

namespace morlik
{

namespace
{

constexpr std::uint8_t kFlipMark = 0xff;

/// Places one texture on its box; gives whether its shape had to be simplified.
bool Place(const std::array<TextureCorner, 4>& corners, bool triangle, std::size_t i,
           LevelData& level, TrMainState& state)
{
    const auto used = std::span<const TextureCorner>(corners).first(triangle ? 3 : 4);
    const PixelBox box = BoxOf(used);
    const TextureLayout layout = LayoutOf(used, box);
    TextInfo& info = level.TextInfos[i];
    info.X = box.Left;
    info.Y = box.Top;
    info.Width = static_cast<std::uint8_t>(box.Right - box.Left);
    info.Height = static_cast<std::uint8_t>(box.Bottom - box.Top);
    state.TextureFlip[i] = layout.Code;
    state.TextureTurn[i] = layout.Turn;
    return layout.Simplified;
}

/// Tomb Raider I to III: every texture stands for itself.
std::size_t ConvertClassicGame(LevelData& level, TrMainState& state)
{
    std::size_t simplified = 0;
    for (std::size_t i = 0; i < state.ObjectTextures.size(); ++i) {
        const ObjectTexture& texture = state.ObjectTextures[i];
        const bool triangle = IsTriangle(texture);
        simplified += Place(texture.Corners, triangle, i, level, state) ? 1U : 0U;
        TextInfo& info = level.TextInfos[i];
        info.FlipX = info.FlipY = triangle ? 0 : kFlipMark;
        info.Tile = texture.Tile;
        state.TextureRemap[i] = static_cast<std::int32_t>(i);
    }
    return simplified;
}

std::size_t ConvertTR45(LevelData& level, TrMainState& state, Reporter& report)
{
    std::size_t simplified = 0;
    SharedBoxes boxes(level, report);
    for (std::size_t i = 0; i < state.ObjectTexturesTR45.size(); ++i) {
        const ObjectTextureTR45& texture = state.ObjectTexturesTR45[i];
        simplified += Place(texture.Corners, IsTriangle(texture), i, level, state) ? 1U : 0U;
        TextInfo& info = level.TextInfos[i];
        info.FlipX = info.FlipY = kFlipMark;
        info.Tile = TileOf(texture);
        state.TextureRemap[i] = boxes.FirstWith(info, static_cast<std::int32_t>(i));
    }
    return simplified;
}

} // namespace

void ConvertFractional(LevelData& level, TrMainState& state, Reporter& report)
{
    StartTextures(level, state);
    const bool tr45 = state.LevelVersion >= kTR4 && state.LevelVersion != kTR1Gold;
    const auto simplified =
        tr45 ? ConvertTR45(level, state, report) : ConvertClassicGame(level, state);
    if (simplified != 0)
        report.LogLine(std::to_string(simplified) + " textures simplified");
}

} // namespace morlik
