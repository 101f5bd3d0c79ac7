#include "gltf/MakeGltf.h"

#include "base/Narrow.h"
#include "base/Text.h"
#include "gltf/Motions.h"
#include "gltf/Primitives.h"
#include "picture/PNG.h"

namespace morlik
{

namespace
{

using tinygltf::Value;

template <std::size_t N>
std::vector<double> Doubles(const std::array<float, N>& values)
{
    return {values.begin(), values.end()};
}

Value BoxOf(const std::array<std::int16_t, 6>& box)
{
    Value::Array sides;
    for (const std::int16_t side : box)
        sides.emplace_back(int{side});
    return Value(std::move(sides));
}

/// Puts objects into a file.
class Maker
{
public:
    Maker(const ObjectSet& set, std::span<const DecodedObject> objects, const GltfOptions& options,
          TexturePixels& textures)
        : set_(set), objects_(objects), options_(options), axes_(options.SectorMetres)
    {
        for (const DecodedObject& object : objects)
            for (const MeshGeometry& mesh : object.Model.Meshes)
                for (const GeometryFace& face : mesh.Faces)
                    atlas_.Need(set, face);
        atlas_.Lay(textures);
    }
    Maker(const Maker&) = delete;
    Maker& operator=(const Maker&) = delete;

    DocumentFiles Make(const std::string& name)
    {
        for (const DecodedObject& object : objects_) {
            tinygltf::Scene scene;
            scene.name = GltfName(object.Object);
            if (object.Object.IsStatic)
                scene.nodes = {AddStatic(object)};
            else
                AddMoveable(object, scene);
            file_.Tables.scenes.push_back(std::move(scene));
        }
        return file_.Finish(atlas_.IsEmpty() ? std::vector<std::byte>() : EncodePNG(atlas_.Image()),
                            name);
    }

private:
    int AddNode(tinygltf::Node node)
    {
        file_.Tables.nodes.push_back(std::move(node));
        return narrow<int>(file_.Tables.nodes.size() - 1);
    }

    /// The number of a mesh in the file; -1, for none, where it has no faces.
    int AddMesh(const MeshGeometry& mesh, const std::string& name)
    {
        Primitives primitives(context_);
        primitives.Add(mesh);
        return primitives.IsEmpty() ? -1 : primitives.Finish(name);
    }

    int AddStatic(const DecodedObject& object)
    {
        const StaticMesh& record = set_.StaticMeshes[object.Object.Place];
        tinygltf::Node node;
        node.name = GltfName(object.Object);
        node.mesh = AddMesh(object.Model.Meshes[0], node.name);
        node.extras = Value(Value::Object{{"id", Value(int{object.Object.ID})},
                                          {"flags", Value(int{record.Flags})},
                                          {"visibilityBox", BoxOf(record.VisibilityBox)},
                                          {"collisionBox", BoxOf(record.CollisionBox)}});
        return AddNode(std::move(node));
    }

    void AddMoveable(const DecodedObject& object, tinygltf::Scene& scene)
    {
        const std::vector<int> nodes = AddTree(object);
        if (options_.HasSkin)
            AddSkin(object, nodes, scene);
        scene.nodes.push_back(nodes[0]);
        const std::string prefix = objects_.size() == 1 ? "" : GltfName(object.Object) + " ";
        motions_.Add(object, nodes, prefix);
    }

    /// The nodes of a moveable, as its first pose has them.
    std::vector<int> AddTree(const DecodedObject& object)
    {
        const Skeleton& joints = object.Model.Joints;
        const Pose pose =
            object.Motions.empty() ? RestPose(joints.size()) : object.Motions[0].Poses[0];
        std::vector<int> nodes;
        for (std::size_t i = 0; i < joints.size(); ++i) {
            tinygltf::Node node;
            node.name = GltfName(object.Object) + " " + std::to_string(i);
            const Point place = joints[i].Parent ? PointOf(joints[i]) : PointOf(pose.Offset);
            node.translation = Doubles(axes_.Place(place));
            node.rotation = Doubles(GltfAxes::Turn(QuaternionOf(pose.Rotations[i])));
            if (!options_.HasSkin)
                node.mesh = AddMesh(object.Model.Meshes[i], node.name);
            if (i == 0)
                node.extras = Value(Value::Object{{"id", Value(int{object.Object.ID})}});
            nodes.push_back(AddNode(std::move(node)));
            if (joints[i].Parent)
                file_.Tables.nodes[static_cast<std::size_t>(nodes[*joints[i].Parent])]
                    .children.push_back(nodes.back());
        }
        return nodes;
    }

    /// One mesh, with all meshes where they lie unturned; the bones move them from there.
    void AddSkin(const DecodedObject& object, const std::vector<int>& nodes, tinygltf::Scene& scene)
    {
        const auto rest = Hang(object.Model.Joints, std::vector<Transform>(nodes.size()), Point{});
        Primitives primitives(context_);
        std::vector<std::array<float, 16>> ways;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const Point& place = rest[i].Shift;
            primitives.Add(object.Model.Meshes[i], place, narrow<std::uint16_t>(i));
            const auto back = axes_.Place({.X = -place.X, .Y = -place.Y, .Z = -place.Z});
            ways.push_back({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, back[0], back[1], back[2], 1});
        }
        if (primitives.IsEmpty())
            return;
        tinygltf::Node node;
        node.name = GltfName(object.Object);
        node.mesh = primitives.Finish(node.name);
        node.skin = narrow<int>(file_.Tables.skins.size());
        tinygltf::Skin skin;
        skin.name = node.name;
        skin.skeleton = nodes[0];
        skin.joints = nodes;
        skin.inverseBindMatrices = file_.Add(ValueKind::Matrices, ways);
        file_.Tables.skins.push_back(std::move(skin));
        scene.nodes.push_back(AddNode(std::move(node)));
    }

    const ObjectSet& set_;
    std::span<const DecodedObject> objects_;
    const GltfOptions& options_;
    GltfAxes axes_;
    Atlas atlas_;
    Document file_;
    Materials materials_{file_, options_};
    MeshContext context_{set_, atlas_, axes_, file_, materials_};
    Motions motions_{file_, axes_};
};

} // namespace

std::string GltfName(const GltfObject& object)
{
    const std::string name = FromLatin1(object.Name);
    return name.empty() ? (object.IsStatic ? "static " : "moveable ") + std::to_string(object.ID)
                        : name;
}

DocumentFiles MakeGltf(const ObjectSet& set, std::span<const DecodedObject> objects,
                       const std::string& name, const GltfOptions& options, TexturePixels& textures)
{
    return Maker(set, objects, options, textures).Make(name);
}

} // namespace morlik
