#pragma once

#include "samples/Textures.h"

namespace morlik::samples
{

/// The textures that were added last to a rich level.
struct ArtTextures
{
    std::size_t First = 0; ///< number of `Art::Unused`

    std::int16_t Of(Art art) const
    {
        return static_cast<std::int16_t>(First + static_cast<std::size_t>(art));
    }
};

/// Lara: fifteen meshes, left and right limbs the same ones, standing and walking.
void AddLara(LevelContent& level, const ArtTextures& textures);

/// Sound numbers that the animations name; the sound map has them.
constexpr std::int16_t kStepSound = 17;
constexpr std::int16_t kMillSound = 59;

} // namespace morlik::samples
