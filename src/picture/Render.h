#pragma once

#include "picture/Camera.h"
#include "picture/Picture.h"
#include "picture/TexturePixels.h"

namespace morlik
{

/// How the pixels of textures are shown.
enum class Filter : std::uint8_t
{
    Nearest, ///< as squares, as the games did
    Linear,  ///< blended with their neighbours in the box of the texture
};

struct RenderOptions
{
    std::int32_t Width = 800;
    std::int32_t Height = 600;
    Colour Background = 0; ///< an opaque colour, or 0 for none
    morlik::Filter Filter = Filter::Nearest;
    bool Wireframe = false; ///< edges of the faces in place of textures; hidden ones stay hidden
    Colour Edges = Opaque(224, 224, 224);
};

/// Draws a scene. Each pixel is the mean of 2 by 2 samples. Blending faces are added last; where
/// there is no background they count as opaque as they are bright.
///
/// The same pixels come on every machine: places are rounded to 1024ths of a unit once the camera
/// has turned them, which swallows what the systems' sines differ by; from there on all is integers
/// or the four basic operations, which the build does not let the compiler fuse.
///
/// `ReadFailure` where the textures lie on too many tiles, or the faces, hidden or not, cover the
/// picture so many times over that no object of a level can be meant. Of many pictures, `workLeft`
/// is what all of them may cost, in samples that are looked at; each takes its share.
Picture Render(const Scene& scene, const Camera& camera, const RenderOptions& options,
               TexturePixels& textures, std::int64_t* workLeft = nullptr);

} // namespace morlik
