// Tells as JSON what the glTF files of a level have to hold, worked out from the model alone, for
// tools/blender_check.py: of each object its meshes, triangles and animations, and where the meshes
// of the first moveable stand in some frames, in metres and the axes of glTF.
// usage: morlik-gltf-facts LEVEL|SET.was [FRAMES]

#include "cli/Json.h"
#include "cli/OpenSet.h"
#include "cli/QuietHost.h"
#include "gltf/SaveGltf.h"
#include "model/Animations.h"
#include "picture/Scene.h"

#include <cstdlib>
#include <iostream>

namespace
{

using morlik::GltfObject;
using morlik::ObjectSet;
using morlik::cli::Json;

Json ObjectFacts(const ObjectSet& set, const GltfObject& object)
{
    const morlik::Model model = object.IsStatic ? morlik::ModelOfStaticMesh(set, object.Place)
                                                : morlik::ModelOfMoveable(set, object.Place);
    std::size_t triangles = 0;
    std::size_t shown = 0;
    for (const morlik::MeshGeometry& mesh : model.Meshes) {
        for (const morlik::GeometryFace& face : mesh.Faces)
            triangles += face.NumCorners - 2U;
        shown += mesh.Faces.empty() ? 0U : 1U;
    }
    return {{"file", morlik::GltfFiles({&object, 1}, "", true, {})[0]},
            {"nodes", model.Joints.size()},
            {"meshes", shown},
            {"triangles", triangles},
            {"animations", object.IsStatic ? 0 : morlik::AnimationsOf(set, object.Place).Count}};
}

/// Where the meshes of the first moveable stand in a frame.
Json PlacesAt(const ObjectSet& set, std::size_t animation, std::size_t frame)
{
    Json places = Json::array();
    for (const auto& transform : morlik::TransformsAt(set, 0, morlik::SkeletonOf(set, 0),
                                                      {.Animation = animation, .Number = frame})) {
        const morlik::Point& place = transform.Shift;
        places.push_back({-place.X / 512, -place.Y / 512, place.Z / 512});
    }
    return places;
}

/// Frames that the set holds, spread over the animations, and others between two of them.
Json PoseFacts(const ObjectSet& set, std::size_t count)
{
    Json poses = Json::array();
    const auto range = morlik::AnimationsOf(set, 0);
    for (std::size_t i = 0; i < count && range.Count > 0; ++i) {
        const std::size_t number = i * range.Count / count;
        const auto animation = morlik::AnimationOf(set, range, number);
        const auto last =
            static_cast<std::size_t>(animation.Record.FrameEnd - animation.Record.FrameStart);
        const std::size_t rate = animation.Record.FrameRate;
        const std::size_t stored = animation.NumFrames == 0 ? 0 : i * 7 % (last / rate + 1) * rate;
        for (const std::size_t frame : {stored, stored + rate / 2})
            if (frame == stored || frame < last)
                poses.push_back({{"animation", number},
                                 {"frame", frame},
                                 {"stored", frame == stored},
                                 {"places", PlacesAt(set, number, frame)}});
    }
    return poses;
}

Json Facts(const morlik::cli::OpenedSet& opened, std::size_t frames)
{
    Json objects = Json::array();
    for (const auto* const kind : {&opened.Moveables, &opened.StaticMeshes}) {
        for (const auto& object : *kind) {
            const bool isStatic = kind == &opened.StaticMeshes;
            const auto shown = opened.Objects->Find({isStatic, object.Place});
            objects.push_back(ObjectFacts(shown.In->Set, {.IsStatic = isStatic,
                                                          .Place = shown.Place,
                                                          .ID = object.ObjectID,
                                                          .Name = object.Names[0]}));
        }
    }
    return {{"objects", std::move(objects)}, {"poses", PoseFacts(opened.Whole(), frames)}};
}

} // namespace

int main(int count, char** words)
{
    if (count < 2)
        return 2;
    const std::size_t frames = count > 2 ? std::strtoul(words[2], nullptr, 10) : 20;
    return morlik::cli::RunQuietly({std::cout, std::cerr}, [&](morlik::Session& session) {
        const auto opened = morlik::cli::OpenSet(session, words[1]);
        morlik::cli::PrintJson(Facts(opened, frames), std::cout);
        return true;
    });
}
