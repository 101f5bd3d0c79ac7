#pragma once

#include "picture/Picture.h"
#include "picture/TexturePixels.h"
#include "set/ObjectSet.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace morlik
{

/// How a contact sheet looks.
struct SheetLook
{
    std::int32_t Columns = 8;
    std::int32_t Side = 128; ///< pixels of a picture
    Colour Background = Opaque(48, 56, 64);
    Colour Letters = Opaque(232, 232, 232);
};

/// A sheet of pictures in rows, each with its label below it, as many lines of it as it takes.
/// `draw` makes the picture of a number; it is at most `Side` wide and high. Nothing where the
/// sheet would be larger than pictures may be.
std::optional<Picture> MakeContactSheet(const std::vector<std::string>& labels,
                                        const SheetLook& look,
                                        const std::function<Picture(std::size_t number)>& draw);

/// A picture of `side` by `side` pixels of all sprites of a sequence, in rows and in proportion to
/// each other. `textures` are those of the sprites' tiles. `ReadFailure` where the sequence is
/// damaged.
Picture DrawSprites(const SpriteTables& sprites, const SpriteSequence& sequence, std::int32_t side,
                    Colour background, TexturePixels& textures);

} // namespace morlik
