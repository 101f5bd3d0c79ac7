// Reads levels of all games and makes glTF files of their objects, all in one and each by itself.

#include "fuzz/LevelInput.h"
#include "gltf/MakeGltf.h"

namespace morlik::fuzz
{

namespace
{

constexpr std::size_t kMostObjects = 16; ///< of each kind

void Export(const ObjectSet& set, const GltfOptions& options)
{
    TexturePixels textures(set.Tiles);
    Allowance allowance;
    std::vector<DecodedObject> all;
    const auto add = [&](std::size_t count, bool isStatic) {
        for (std::size_t i = 0; i < std::min(count, kMostObjects); ++i)
            try {
                all.push_back(Decode(
                    set, {.IsStatic = isStatic, .Place = i, .ID = 1, .Name = "\xe9"}, allowance));
                MakeGltf(set, std::span(all).last(1), "", options, textures);
            } catch (const ReadFailure&) { // the object is damaged
            }
    };
    add(set.Moveables.size(), false);
    add(set.StaticMeshes.size(), true);
    try {
        MakeGltf(set, all, "n", options, textures);
    } catch (const ReadFailure&) { // the textures of all don't fit in a picture
    }
}

} // namespace

} // namespace morlik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    morlik::fuzz::Run run;
    run.TryOnSet({data, size}, [size](const morlik::ObjectSet& set) {
        morlik::fuzz::Export(set, {.HasSkin = size % 2 == 1});
    });
    return 0;
}
