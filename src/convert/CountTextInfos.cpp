#include "base/Narrow.h"
#include "convert/Faces.h"

namespace morlik
{

namespace
{

/// Marks the textures of the meshes, hopping through their bytes by the counts.
class Census
{
public:
    Census(const LevelData& level, const TrMainState& state)
        : level_(level),
          state_(state),
          classic_(IsClassic(level.Version)),
          walked_(level.MeshData.size()),
          budget_(level.MeshData.size()),
          used_(level.TextInfos.size())
    {
    }

    /// Marks the textures of a mesh. Gives the kind of the face whose texture is unknown, or null.
    const char* Walk(std::int32_t offset)
    {
        ByteReader reader(level_.MeshData);
        reader.Section("mesh");
        const auto start = narrow<std::size_t>(offset);
        reader.Seek(start);
        reader.Skip(kMeshHeadBytes);
        // A mesh that the table names again adds nothing.
        if (walked_[start])
            return nullptr;
        walked_[start] = true;
        reader.SkipTable(reader.Read<std::int16_t>(), sizeof(Vertex));
        const auto normals = reader.Read<std::int16_t>();
        reader.SkipTable(normals < 0 ? -normals : normals, normals < 0 ? 2 : sizeof(Vertex));
        if (!MarkFaces(reader, 4))
            return "rectangle";
        if (!MarkFaces(reader, 3))
            return "triangle";
        budget_.Spend(reader.Position() - start);
        return nullptr;
    }

    std::vector<std::int32_t> Used() const
    {
        std::vector<std::int32_t> list;
        for (std::size_t i = 0; i < used_.size(); ++i)
            if (used_[i])
                list.push_back(static_cast<std::int32_t>(i));
        return list;
    }

private:
    bool MarkFaces(ByteReader& reader, std::size_t corners)
    {
        const auto size = TexturedFaceWords(corners, classic_) * sizeof(std::int16_t);
        ByteReader faces(reader.TakeTable(reader.Read<std::int16_t>(), size));
        while (faces.Left() != 0) {
            ByteReader face(faces.Take(size));
            face.Skip(corners * sizeof(std::int16_t));
            const auto texture = face.Read<std::uint16_t>();
            if (texture >= state_.TextureRemap.size())
                return false;
            const auto shared = static_cast<std::size_t>(state_.TextureRemap[texture]);
            if (shared >= used_.size())
                return false;
            used_[shared] = true;
        }
        return true;
    }

    const LevelData& level_;
    const TrMainState& state_;
    bool classic_;
    std::vector<bool> walked_; ///< by offset in the mesh data
    MeshBudget budget_;
    std::vector<bool> used_; ///< by texture index
};

} // namespace

std::optional<std::vector<std::int32_t>> CountTextInfos(const LevelData& level,
                                                        const TrMainState& state, Reporter& report)
{
    Census census(level, state);
    for (std::size_t i = 0; i < level.MeshPointers.size(); ++i) {
        try {
            if (const char* kind = census.Walk(level.MeshPointers[i])) {
                report.Message(std::string("Unknown texture found in ") + kind + "!");
                return std::nullopt;
            }
        } catch (const ReadFailure& failure) {
            StopAtMesh(i, failure, report);
        }
    }
    return census.Used();
}

void StopAtMesh(std::size_t number, const ReadFailure& failure, Reporter& report)
{
    report.LogLine(failure.what());
    report.Stop("Mesh " + std::to_string(number) + " is damaged - can't continue!");
}

} // namespace morlik
