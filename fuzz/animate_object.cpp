// Reads levels of all games and draws an animation of one of their objects, small, into a file.

#include "fuzz/LevelInput.h"
#include "picture/Animation.h"
#include "picture/MovingFile.h"

#include <numeric>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace morlik;
    fuzz::Run run;
    run.TryOnSet({data, size}, [&](const ObjectSet& set) {
        if (set.Moveables.empty())
            return;
        const std::size_t chosen = std::accumulate(data, data + size, std::size_t{0});
        try {
            const std::size_t moveable = chosen % set.Moveables.size();
            const AnimatedScene animated(set, moveable, chosen / set.Moveables.size() % 3);
            const auto file = chosen % 2 == 0
                                  ? NewAnimatedWebP(run.File("out.webp"), animated.NumFrames())
                                  : NewAnimatedPNG(run.File("out.png"), animated.NumFrames());
            TexturePixels textures(set.Tiles);
            DrawAnimation(animated, ObliqueCamera(), {.Width = 24, .Height = 24}, textures,
                          [&](const Picture& picture) { file->Add(picture); });
            file->TakePlace();
        } catch (const ReadFailure&) { // the object is damaged
        }
    });
    return 0;
}
