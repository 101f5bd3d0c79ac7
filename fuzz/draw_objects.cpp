// Reads levels of all games and draws their objects, small.

#include "fuzz/LevelInput.h"
#include "picture/Render.h"

namespace morlik::fuzz
{

namespace
{

constexpr std::size_t kMostObjects = 16; ///< of each kind

template <class MakeScene>
void Draw(std::size_t count, TexturePixels& textures, MakeScene makeScene)
{
    for (std::size_t i = 0; i < std::min(count, kMostObjects); ++i)
        try {
            const Scene scene = makeScene(i);
            Camera camera = ObliqueCamera();
            FrameTo(camera, scene, 1);
            Render(scene, camera, {.Width = 32, .Height = 32}, textures);
        } catch (const ReadFailure&) { // the object is damaged
        }
}

} // namespace

} // namespace morlik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    run.TryOnSet({data, size}, [size](const morlik::ObjectSet& set) {
        morlik::TexturePixels textures(set.Tiles);
        const morlik::FrameChoice frame{.Animation = 0, .Number = size % 3};
        morlik::fuzz::Draw(set.Moveables.size(), textures,
                           [&](std::size_t i) { return morlik::SceneOfMoveable(set, i, frame); });
        morlik::fuzz::Draw(set.StaticMeshes.size(), textures,
                           [&](std::size_t i) { return morlik::SceneOfStaticMesh(set, i); });
    });
    return 0;
}
