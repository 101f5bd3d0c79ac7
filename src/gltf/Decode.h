#pragma once

#include "gltf/SaveGltf.h"
#include "model/Animations.h"
#include "model/Model.h"

#include <cstddef>
#include <vector>

namespace morlik
{

/// What the files of one export may still take, in bytes of memory as they are made, which are
/// several times those on the disk. Damaged tables can lead to the same frames and faces again and
/// again.
class Allowance
{
public:
    /// All objects of real levels fit in half of it; what the level itself takes comes on top.
    static constexpr std::size_t kAll = std::size_t{192} << 20U;

    /// `ReadFailure` if no more is left. What is taken stays so, also for objects that fail.
    void Take(std::size_t count, std::size_t bytesOfEach);

private:
    std::size_t left_ = kAll;
};

/// A state change of an animation and its dispatches.
struct ModelStateChange
{
    std::int16_t StateID = 0;
    std::vector<AnimDispatch> Dispatches;
};

/// An animation with its poses and all that hangs on it.
struct Motion
{
    ModelAnimation Source;
    std::vector<Pose> Poses; ///< of its stored frames; at least one
    std::vector<ModelStateChange> StateChanges;
    std::vector<std::vector<std::int16_t>> Commands; ///< each with its type
};

/// An object, wholly decoded, so that from there on nothing can fail.
struct DecodedObject
{
    GltfObject Object;
    morlik::Model Model;
    std::size_t FirstAnimation = 0; ///< number in the set of the first of its animations
    std::vector<Motion> Motions;    ///< none of a static mesh
};

/// `ReadFailure` if the object is damaged or takes more than is left.
DecodedObject Decode(const ObjectSet& set, const GltfObject& object, Allowance& allowance);

} // namespace morlik
