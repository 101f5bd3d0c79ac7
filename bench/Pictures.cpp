#include "bench/Pictures.h"

#include "base/Text.h"
#include "cli/OpenSet.h"
#include "cli/QuietHost.h"
#include "picture/Render.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace morlik::bench
{

namespace
{

/// Median milliseconds of the clock that a work takes.
template <class Work>
double TimeOf(int runs, Work work)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        times.push_back(taken.count());
    }
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

void Draw(const Scene& scene, const RenderOptions& options, TexturePixels& textures)
{
    Camera camera = ObliqueCamera();
    FrameTo(camera, scene.Vertices, static_cast<double>(options.Width) / options.Height);
    Render(scene, camera, options, textures);
}

void DrawAll(const ObjectSet& set)
{
    const RenderOptions small{.Width = 128, .Height = 128};
    TexturePixels textures(set.Tiles);
    for (std::size_t i = 0; i < set.Moveables.size(); ++i)
        Draw(SceneOfMoveable(set, i), small, textures);
    for (std::size_t i = 0; i < set.StaticMeshes.size(); ++i)
        Draw(SceneOfStaticMesh(set, i), small, textures);
}

} // namespace

void MeasurePictures(const std::vector<std::string>& levels, int runs)
{
    std::printf("\nms of the clock for pictures: the first moveable at 800 by 600, nearest and\n"
                "linear, its textures at hand; all objects at 128 by 128 with their textures\n\n"
                "%-14s %8s %8s %8s %8s %8s\n",
                "level", "meshes", "nearest", "linear", "objects", "all");
    for (const std::string& level : levels) {
        cli::QuietHost host;
        Session session(host);
        const ObjectSet set = cli::OpenSet(session, level).Set;
        TexturePixels textures(set.Tiles);
        const auto large = [&](Filter filter) {
            Draw(SceneOfMoveable(set, 0), {.Width = 800, .Height = 600, .Filter = filter},
                 textures);
        };
        std::printf("%-14s %8d %8.2f", FileTitle(level).c_str(), int{set.Moveables[0].NumMeshes},
                    TimeOf(runs, [&] { large(Filter::Nearest); }));
        std::printf(" %8.2f %8zu %8.1f\n", TimeOf(runs, [&] { large(Filter::Linear); }),
                    set.Moveables.size() + set.StaticMeshes.size(),
                    TimeOf(runs, [&] { DrawAll(set); }));
        static_cast<void>(std::fflush(stdout));
    }
}

} // namespace morlik::bench
