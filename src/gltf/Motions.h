#pragma once

#include "gltf/Axes.h"
#include "gltf/Decode.h"
#include "gltf/Document.h"

#include <map>
#include <string>
#include <vector>

namespace morlik
{

/// Writes the animations of the objects of a file.
class Motions
{
public:
    Motions(Document& document, const GltfAxes& axes) : document_(document), axes_(axes) {}

    /// Adds the animations of an object whose meshes, or bones, have these nodes. Their names are
    /// their numbers behind `prefix`.
    void Add(const DecodedObject& object, const std::vector<int>& nodes, const std::string& prefix);

private:
    /// A moment of an animation that has a key.
    struct Moment
    {
        std::size_t Frame; ///< number from the first one, 30 to a second
        std::size_t Pose;  ///< among those of the motion, and where it lies behind it
        double Share;      ///< the share of the way to the next pose
    };
    static std::vector<Moment> MomentsOf(const Motion& motion);
    int Times(const std::vector<Moment>& moments);
    void AddChannel(tinygltf::Animation& animation, int node, const char* path, int times,
                    int values);
    tinygltf::Animation MotionOf(const Motion& motion, const std::vector<int>& nodes);

    Document& document_;
    const GltfAxes& axes_;
    std::map<std::vector<float>, int> times_; ///< those that are there, which animations share
};

/// What an animation tells apart from its poses. Its numbers of animations count from the object's
/// first one.
tinygltf::Value NotesOf(const Motion& motion, std::size_t firstAnimation);

} // namespace morlik
