#pragma once

#include "gallery/Store.h"
#include "picture/Scene.h"
#include "picture/TexturePixels.h"
#include "set/ObjectSet.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace morlik::gallery
{

// Pixels of the pictures, which are squares without a background.
constexpr std::int32_t kStillSide = 256;
constexpr std::int32_t kMovingSide = 320;
constexpr std::int32_t kStripSide = 96; ///< of each of a level's contact strip
constexpr std::size_t kStripObjects = 10;

/// Pictures that a page may still take for what moves on it: no intact level comes near, and tables
/// of a damaged one can't make a gallery go on for hours.
struct MovingBudget
{
    std::size_t PicturesLeft = std::size_t{1} << 15U;

    /// Takes so many, unless they are not left.
    bool Take(std::size_t pictures);
};

/// The pictures of a gallery. Each is named by what it shows, the vertices, faces and texture
/// pixels of an object, and drawn only where no level before has drawn it. The names are those of
/// the store; empty ones stand for what has nothing to show, or is beyond a limit.
class Pictures
{
public:
    Pictures(Store& store, MovingBudget& budget) : store_(store), budget_(budget) {}

    /// The object as the contact sheet shows it.
    std::string Still(const Scene& scene, TexturePixels& textures);
    /// The object as it turns once about its upright axis.
    std::string Turning(const Scene& scene, TexturePixels& textures);
    /// An animation of a moveable.
    std::string Moving(const ObjectSet& set, std::size_t moveable, std::size_t animation,
                       TexturePixels& textures);
    /// The sprites of a sequence.
    std::string Sprites(const SpriteTables& sprites, const SpriteSequence& sequence,
                        TexturePixels& textures);
    /// A tile, whose pixels are needed already.
    std::string Tile(std::int32_t number, const TexturePixels& textures);
    /// An object of a level's contact strip, and the strip of some of them, which is as wide as for
    /// all that have room there.
    static Picture ForStrip(const Scene& scene, TexturePixels& textures);
    std::string Strip(const std::vector<Picture>& objects);

private:
    Store& store_;
    MovingBudget& budget_;
};

} // namespace morlik::gallery
