#pragma once

#include "level/LevelData.h"
#include "level/TrMainState.h"
#include "set/ObjectSet.h"

namespace morlik::test
{

/// How many textured faces of a level show the right pixels in the saved set.
struct FaceShare
{
    std::size_t Faces = 0;
    std::size_t Agreeing = 0;

    double Share() const
    {
        return Faces == 0 ? 1 : static_cast<double>(Agreeing) / static_cast<double>(Faces);
    }
};

/// Compares, for every textured face, the pixel that the set gives to each vertex, by its texture
/// record and its code or sign, with the corner that the level has for that vertex. They agree
/// where no vertex is off by more than a pixel.
FaceShare ProveFaces(const LevelData& level, const TrMainState& state, const ObjectSet& wad);

} // namespace morlik::test
