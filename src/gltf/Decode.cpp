#include "gltf/Decode.h"

#include "base/AnimCommands.h"
#include "base/Narrow.h"
#include "model/Damage.h"

#include <algorithm>

namespace morlik
{

namespace
{

// Bytes that things take while a file is made, its JSON included; measured, and rounded up.
constexpr std::size_t kNodeBytes = 11264;   ///< a mesh with its node
constexpr std::size_t kVertexBytes = 64;    ///< as it is decoded
constexpr std::size_t kFaceBytes = 1280;    ///< with four vertices of its own and two triangles
constexpr std::size_t kChannelBytes = 4096; ///< the keys of a node in an animation, without them
constexpr std::size_t kKeyBytes = 160;      ///< a turn of a mesh, or a move
constexpr std::size_t kNoteBytes = 4096;    ///< a state change, a dispatch or a command

/// The records from `first` on that an animation names; `ReadFailure` if the table ends before.
template <class Record>
std::span<const Record> RecordsOf(const std::vector<Record>& table, std::int64_t first,
                                  std::int64_t count, const char* what)
{
    if (count <= 0)
        return {};
    if (!Inside(first, count, table.size()))
        FailDamaged(count, " ", what, " from ", first, " on of ", table.size());
    return std::span(table).subspan(static_cast<std::size_t>(first),
                                    static_cast<std::size_t>(count));
}

std::vector<ModelStateChange> StateChangesOf(const ObjectSet& set, const Animation& record,
                                             Allowance& allowance)
{
    std::vector<ModelStateChange> changes;
    for (const StateChange& change :
         RecordsOf(set.StateChanges, record.StateChange, record.NumStateChanges, "state changes")) {
        const auto dispatches = RecordsOf(set.AnimDispatches, change.AnimDispatch,
                                          change.NumAnimDispatches, "dispatches");
        allowance.Take(1 + dispatches.size(), kNoteBytes);
        changes.push_back({change.StateID, {dispatches.begin(), dispatches.end()}});
    }
    return changes;
}

std::vector<std::vector<std::int16_t>> CommandsOf(const ObjectSet& set, const Animation& record,
                                                  Allowance& allowance)
{
    std::vector<std::vector<std::int16_t>> commands;
    const std::span<const std::int16_t> words(set.AnimCommands);
    auto at = static_cast<std::size_t>(std::max<std::int16_t>(record.AnimCommand, 0));
    for (int i = 0; i < record.NumAnimCommands; ++i) {
        const std::size_t length = CommandLength(words, at);
        if (length == 0)
            FailDamaged("command ", i, " of an animation at word ", at, " of ", words.size());
        allowance.Take(1, kNoteBytes);
        const auto command = words.subspan(at, length);
        commands.emplace_back(command.begin(), command.end());
        at += length;
    }
    return commands;
}

Motion MotionOf(const ObjectSet& set, const AnimationRange& range, std::size_t number,
                Allowance& allowance)
{
    Motion motion;
    motion.Source = AnimationOf(set, range, number);
    const Animation& record = motion.Source.Record;
    allowance.Take(range.NumMeshes + 1, kChannelBytes);
    allowance.Take(motion.Source.NumFrames * (range.NumMeshes + 1), kKeyBytes);
    motion.Poses.reserve(motion.Source.NumFrames);
    for (std::size_t frame = 0; frame < motion.Source.NumFrames; ++frame)
        motion.Poses.push_back(PoseOf(set, motion.Source, frame));
    if (motion.Poses.empty())
        motion.Poses.push_back(RestPose(range.NumMeshes));
    motion.StateChanges = StateChangesOf(set, record, allowance);
    motion.Commands = CommandsOf(set, record, allowance);
    return motion;
}

} // namespace

void Allowance::Take(std::size_t count, std::size_t bytesOfEach)
{
    if (count > left_ / bytesOfEach) {
        left_ = 0;
        FailDamaged("all objects together would take more than ", kAll >> 20U, " MiB");
    }
    left_ -= count * bytesOfEach;
}

DecodedObject Decode(const ObjectSet& set, const GltfObject& object, Allowance& allowance)
{
    DecodedObject decoded{.Object = object, .Model = {}, .Motions = {}};
    const std::size_t meshes = object.IsStatic ? 1 : NumMeshesOf(set, object.Place);
    if (meshes > set.Meshes.MeshPointers.size()) // or it would use up what the others need
        FailDamaged("moveable ", object.Place, ": ", meshes, " meshes");
    allowance.Take(meshes, kNodeBytes);
    decoded.Model =
        object.IsStatic ? ModelOfStaticMesh(set, object.Place) : ModelOfMoveable(set, object.Place);
    for (const MeshGeometry& mesh : decoded.Model.Meshes) {
        allowance.Take(mesh.Positions.size(), kVertexBytes);
        allowance.Take(mesh.Faces.size(), kFaceBytes);
    }
    if (object.IsStatic)
        return decoded;
    const AnimationRange range = AnimationsOf(set, object.Place);
    decoded.FirstAnimation = range.First;
    for (std::size_t number = 0; number < range.Count; ++number)
        decoded.Motions.push_back(MotionOf(set, range, number, allowance));
    return decoded;
}

} // namespace morlik
