#include "picture/Scene.h"

#include "base/Narrow.h"
#include "model/Animations.h"
#include "model/Between.h"
#include "model/Damage.h"

#include <algorithm>

namespace morlik
{

namespace
{

SceneVertex VertexOf(const MeshGeometry& mesh, std::size_t index, const Transform& transform)
{
    SceneVertex vertex{.Position = transform.Apply(PointOf(mesh.Positions[index])), .Normal = {}};
    if (!mesh.Normals.empty()) {
        const Transform turn{.Turn = transform.Turn, .Shift = {}};
        const Point normal = turn.Apply(PointOf(mesh.Normals[index]));
        if (const double length = Length(normal); length > 0)
            vertex.Normal = {normal.X / length, normal.Y / length, normal.Z / length};
    } else if (!mesh.Lights.empty()) {
        vertex.Light = ShownLight(mesh.Lights[index]);
    }
    return vertex;
}

SceneFace FaceOf(const ObjectSet& set, const GeometryFace& face, std::uint32_t firstVertex)
{
    SceneFace made{.NumCorners = face.NumCorners,
                   .Corners = {},
                   .Texture = set.Textures[face.Texture],
                   .Blends = face.Blends()};
    for (std::size_t i = 0; i < face.NumCorners; ++i) {
        const FaceCorner& corner = face.Corners[i];
        const bool isRight = corner.X > made.Texture.X;
        const bool isBottom = corner.Y > made.Texture.Y;
        made.Corners[i] = {.Vertex = firstVertex + corner.Vertex,
                           .U = static_cast<std::uint16_t>(corner.X + (isRight ? 1 : 0)),
                           .V = static_cast<std::uint16_t>(corner.Y + (isBottom ? 1 : 0))};
    }
    return made;
}

} // namespace

Scene SceneOf(const ObjectSet& set, const Model& model, std::span<const Transform> transforms)
{
    Scene scene;
    for (std::size_t i = 0; i < std::min(model.Meshes.size(), transforms.size()); ++i) {
        const MeshGeometry& mesh = model.Meshes[i];
        const auto first = narrow<std::uint32_t>(scene.Vertices.size());
        for (std::size_t vertex = 0; vertex < mesh.Positions.size(); ++vertex)
            scene.Vertices.push_back(VertexOf(mesh, vertex, transforms[i]));
        for (const GeometryFace& face : mesh.Faces)
            scene.Faces.push_back(FaceOf(set, face, first));
    }
    return scene;
}

std::vector<Transform> TransformsAt(const ObjectSet& set, std::size_t moveable,
                                    const Skeleton& joints, const FrameChoice& frame)
{
    const AnimationRange range = AnimationsOf(set, moveable);
    if (range.Count == 0 && frame.Animation == 0 && frame.Number == 0)
        return TransformsOf(joints, RestPose(joints.size()));
    const ModelAnimation animation = AnimationOf(set, range, frame.Animation);
    if (animation.NumFrames == 0 && frame.Number == 0)
        return TransformsOf(joints, RestPose(joints.size()));
    const Animation& record = animation.Record;
    const auto last = narrow<std::size_t>(record.FrameEnd - record.FrameStart);
    if (frame.Number > last)
        FailDamaged("frame ", frame.Number, " of an animation of ", last + 1);
    const std::size_t stored = frame.Number / record.FrameRate;
    const std::size_t behind = frame.Number % record.FrameRate;
    const Pose pose = PoseOf(set, animation, stored);
    if (behind == 0 || stored + 1 == animation.NumFrames)
        return TransformsOf(joints, pose);
    return TransformsBetween(joints, pose, PoseOf(set, animation, stored + 1),
                             static_cast<double>(behind) / record.FrameRate);
}

Scene SceneOfMoveable(const ObjectSet& set, std::size_t moveable, const FrameChoice& frame)
{
    const Model model = ModelOfMoveable(set, moveable);
    return SceneOf(set, model, TransformsAt(set, moveable, model.Joints, frame));
}

Scene SceneOfStaticMesh(const ObjectSet& set, std::size_t staticMesh)
{
    return SceneOf(set, ModelOfStaticMesh(set, staticMesh), std::vector<Transform>(1));
}

} // namespace morlik
