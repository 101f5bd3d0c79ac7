#include "convert/ConvertMeshes.h"

#include "convert/Faces.h"
#include "convert/Horizon.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace morlik
{

namespace
{

constexpr std::int32_t kHorizonTR2 = 254;
constexpr std::int32_t kHorizonTR3 = 355;
constexpr std::int32_t kNoMesh = -1;

/// The first mesh of the horizon object; of several such objects the last one counts.
std::int32_t FindHorizon(const LevelData& level)
{
    std::int32_t mesh = kNoMesh;
    if (level.Version != kTR2 && level.Version != kTR3)
        return mesh;
    const auto id = level.Version == kTR2 ? kHorizonTR2 : kHorizonTR3;
    for (const Moveable& moveable : level.Moveables)
        if (moveable.ObjectID == id)
            mesh = moveable.StartingMesh;
    return mesh;
}

/// Converts the meshes in the order of the pointer table; one that stands in it again gets the
/// pointer of its first copy.
class MeshConversion
{
public:
    MeshConversion(const LevelData& level, const FaceTables& tables, bool updateHorizon,
                   std::vector<std::string>& info, Reporter& report)
        : level_(level),
          tables_(tables),
          updateHorizon_(updateHorizon),
          info_(info),
          horizon_(FindHorizon(level)),
          budget_(level.MeshData.size()),
          report_(report)
    {
    }

    WadMeshSet Run()
    {
        set_.MeshPointers.reserve(level_.MeshPointers.size());
        // Records are a little larger than what they are made of.
        const auto source = std::min(level_.MeshData.size(), MeshBudget::kMostBytes);
        set_.MeshData.reserve(source + source / 2);
        for (std::size_t i = 0; i < level_.MeshPointers.size(); ++i) {
            const auto position = static_cast<std::int32_t>(set_.MeshData.size());
            const auto [seen, isNew] = seenMeshes_.try_emplace(level_.MeshPointers[i], position);
            if (!isNew) {
                AppendMeshPointer(set_, seen->second);
                continue;
            }
            try {
                Store(i);
            } catch (const ReadFailure& failure) {
                StopAtMesh(i, failure, report_);
            }
        }
        return std::move(set_);
    }

private:
    void Store(std::size_t number)
    {
        auto raw =
            ReadRawMesh(level_.MeshData, level_.MeshPointers[number], IsOlderGame(level_.Version));
        budget_.Spend(raw.SourceBytes);
        raw.Number = number;
        std::optional<HorizonUpdate> horizon;
        if (static_cast<std::int32_t>(number) == horizon_)
            horizon.emplace(level_, tables_.Textures.ColourBase(), updateHorizon_, info_);
        AppendWadMesh(set_, ConvertRawMesh(std::move(raw), tables_, horizon, report_), report_);
    }

    const LevelData& level_;
    const FaceTables& tables_;
    bool updateHorizon_;
    std::vector<std::string>& info_;
    std::int32_t horizon_; ///< its mesh number
    /// Offset of the stored record by offset in the level's mesh data. An array as long as the data
    /// would be looked up faster, but it has to be cleared before, and most of it is never read.
    std::unordered_map<std::int32_t, std::int32_t> seenMeshes_;
    MeshBudget budget_;
    WadMeshSet set_;
    Reporter& report_;
};

} // namespace

WadMeshSet ConvertMeshes(const LevelData& level, const UsedTextures& textures, bool updateHorizon,
                         std::vector<std::string>& info, Reporter& report)
{
    const FaceTables tables{level, textures};
    return MeshConversion(level, tables, updateHorizon, info, report).Run();
}

} // namespace morlik
