#include "bench/Pictures.h"

#include "base/Text.h"
#include "cli/OpenSet.h"
#include "cli/QuietHost.h"
#include "gltf/Atlas.h"
#include "gltf/MakeGltf.h"
#include "picture/PNG.h"
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
    FrameTo(camera, scene, static_cast<double>(options.Width) / options.Height);
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

/// Objects of a level on their way to files of their own.
class GltfExport
{
public:
    explicit GltfExport(const cli::OpenedSet& opened) : set_(opened.Whole())
    {
        for (const cli::NamedObject& object : opened.Moveables)
            objects_.push_back({.Place = object.Place, .Name = object.Names[0]});
        for (const cli::NamedObject& object : opened.StaticMeshes)
            if (object.Place < set_.StaticMeshes.size()) // that a set takes
                objects_.push_back(
                    {.IsStatic = true, .Place = object.Place, .Name = object.Names[0]});
    }

    std::size_t Count() const { return objects_.size(); }

    /// Gives the bytes of all files.
    std::size_t MakeAll()
    {
        TexturePixels textures(set_.Tiles);
        Allowance allowance;
        std::size_t bytes = 0;
        for (const GltfObject& object : objects_) {
            const DecodedObject decoded = Decode(set_, object, allowance);
            bytes += MakeGltf(set_, {&decoded, 1}, "", {}, textures).Main.size();
        }
        return bytes;
    }
    std::vector<Picture> Images()
    {
        TexturePixels textures(set_.Tiles);
        Allowance allowance;
        std::vector<Picture> images;
        for (const GltfObject& object : objects_) {
            Atlas atlas;
            for (const MeshGeometry& mesh : Decode(set_, object, allowance).Model.Meshes)
                for (const GeometryFace& face : mesh.Faces)
                    atlas.Need(set_, face);
            atlas.Lay(textures);
            if (!atlas.IsEmpty())
                images.push_back(atlas.Image());
        }
        return images;
    }

private:
    const ObjectSet& set_;
    std::vector<GltfObject> objects_;
};

} // namespace

void MeasureGltf(const std::vector<std::string>& levels, int runs)
{
    std::printf("\nms of the clock for glTF files of all objects, in memory; the goal is 1500\n\n"
                "%-14s %8s %8s %8s %8s\n",
                "level", "objects", "KiB", "ms", "PNG %");
    for (const std::string& level : levels) {
        cli::QuietHost host;
        Session session(host);
        const cli::OpenedSet opened = cli::OpenSet(session, level);
        GltfExport work(opened);
        const auto images = work.Images();
        const double all = TimeOf(runs, [&] { work.MakeAll(); });
        const double png = TimeOf(runs, [&] {
            for (const Picture& image : images)
                EncodePNG(image);
        });
        std::printf("%-14s %8zu %8zu %8.1f %8.0f\n", FileTitle(level).c_str(), work.Count(),
                    work.MakeAll() / 1024, all, 100 * png / all);
        static_cast<void>(std::fflush(stdout));
    }
}

void MeasurePictures(const std::vector<std::string>& levels, int runs)
{
    std::printf("\nms of the clock for pictures: the first moveable at 800 by 600, nearest and\n"
                "linear, its textures at hand; all objects at 128 by 128 with their textures\n\n"
                "%-14s %8s %8s %8s %8s %8s\n",
                "level", "meshes", "nearest", "linear", "objects", "all");
    for (const std::string& level : levels) {
        cli::QuietHost host;
        Session session(host);
        const cli::OpenedSet opened = cli::OpenSet(session, level);
        const ObjectSet& set = opened.Whole();
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
