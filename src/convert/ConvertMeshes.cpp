#include "convert/ConvertMeshes.h"

#include "convert/Faces.h"

#include <algorithm>
#include <unordered_map>

namespace morlik
{

namespace
{

/// Texture numbers of triangles share their word with a corner code in the top bits, and the
/// colour squares follow behind; from this count on the numbers no longer fit.
constexpr std::size_t kMostTextures = 2048;

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

void CheckTextureCount(std::size_t count, Reporter& report)
{
    const auto number = std::to_string(count);
    if (count >= kMostTextures) {
        report.LogLine("ERROR! To many textures used (" + number + ")");
        report.Stop("To many object textures in level - can't continue!");
    }
    report.LogLine(number + " TextInfos found");
}

/// The sign of a rectangle's texture number mirrors it, and 0 has none: a mirrored first texture
/// would lie the wrong way. Levels of the games' own tools keep the order of their textures all
/// the same; in others a texture that nothing mirrors takes the number 0.
void KeepSignOfFirst(std::vector<std::int32_t>& used, const TrMainState& state)
{
    std::vector<bool> mirrored(state.TextureFlip.size());
    for (std::size_t i = 0; i < state.TextureFlip.size(); ++i)
        if (state.TextureFlip[i] == -1)
            mirrored[static_cast<std::size_t>(state.TextureRemap[i])] = true;
    const auto plain = std::find_if(used.begin(), used.end(), [&](std::int32_t index) {
        return !mirrored[static_cast<std::size_t>(index)];
    });
    if (plain != used.end())
        std::rotate(used.begin(), plain, plain + 1);
}

/// Converts the meshes in the order of the pointer table; one that stands in it again gets the
/// pointer of its first copy.
class MeshConversion
{
public:
    MeshConversion(const LevelData& level, const FaceTables& tables, Reporter& report)
        : level_(level),
          tables_(tables),
          horizon_(FindHorizon(level)),
          budget_(level.MeshData.size()),
          report_(report)
    {
    }

    WadMeshSet Run()
    {
        set_.MeshPointers.reserve(level_.MeshPointers.size());
        // Records are a little larger than what they are made of.
        set_.MeshData.Reserve(level_.MeshData.size() + level_.MeshData.size() / 2);
        for (std::size_t i = 0; i < level_.MeshPointers.size(); ++i) {
            const auto position = 2 * set_.NumMeshWords;
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
            ReadRawMesh(level_.MeshData, level_.MeshPointers[number], IsClassic(level_.Version));
        budget_.Spend(raw.SourceBytes);
        const bool isHorizon = static_cast<std::int32_t>(number) == horizon_;
        const auto mesh = ConvertRawMesh(std::move(raw), tables_, isHorizon, report_);
        const auto padding = WadMeshSize(mesh) % 4 == 0 ? 0 : 2;
        AppendWadMesh(set_, mesh, padding, report_);
    }

    const LevelData& level_;
    const FaceTables& tables_;
    std::int32_t horizon_;
    /// Offset of the stored record by offset in the level's mesh data. An array as long as the data
    /// would be looked up faster, but it has to be cleared before, and most of it is never read.
    std::unordered_map<std::int32_t, std::int32_t> seenMeshes_;
    MeshBudget budget_;
    WadMeshSet set_;
    Reporter& report_;
};

} // namespace

std::optional<WadMeshSet> ConvertMeshes(const LevelData& level, const TrMainState& state,
                                        std::int32_t& numWadTextures,
                                        std::vector<std::int32_t>& textureNumbers, Reporter& report)
{
    report.LogLine("Converting Meshes");
    auto used = CountTextInfos(level, state, report);
    if (!used)
        return std::nullopt;
    CheckTextureCount(used->size(), report);
    if (state.Fractional)
        KeepSignOfFirst(*used, state);
    for (const auto index : *used)
        textureNumbers[static_cast<std::size_t>(index)] = numWadTextures++;
    const FaceTables tables{level.Version, state, textureNumbers, numWadTextures};
    return MeshConversion(level, tables, report).Run();
}

} // namespace morlik
