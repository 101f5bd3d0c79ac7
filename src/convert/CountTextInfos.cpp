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
    explicit Census(const LevelData& level)
        : level_(level),
          isOlderGame_(IsOlderGame(level.Version)),
          walked_(level.MeshData.size()),
          budget_(level.MeshData.size()),
          used_(level.Textures.size())
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

    /// The last unknown texture and its place.
    const std::string& Unknown() const { return unknown_; }

    std::vector<std::int32_t> Used() const
    {
        std::vector<std::int32_t> list;
        for (std::size_t i = 0; i < used_.size(); ++i)
            if (used_[i])
                list.push_back(static_cast<std::int32_t>(i));
        return list;
    }

private:
    /// Face by face, so that of two faults in one mesh the first one is told.
    bool MarkFaces(ByteReader& reader, std::size_t corners)
    {
        const auto count = reader.Read<std::int16_t>();
        if (count < 0)
            reader.Fail("a count of " + std::to_string(count));
        for (std::int16_t i = 0; i < count; ++i) {
            reader.Skip(corners * sizeof(std::int16_t));
            const auto texture = reader.Read<std::uint16_t>();
            if (!Mark(texture)) {
                unknown_ = "offset " + std::to_string(reader.Position() - sizeof(texture)) +
                           " of the mesh data: texture " + std::to_string(texture) + " of " +
                           std::to_string(level_.Textures.size());
                return false;
            }
            if (!isOlderGame_)
                reader.Skip(sizeof(std::int16_t)); // attribute
        }
        return true;
    }

    bool Mark(std::uint16_t texture)
    {
        if (texture >= level_.Textures.size())
            return false;
        const auto shared = static_cast<std::size_t>(level_.Textures[texture].TextureRemap);
        if (shared >= used_.size())
            return false;
        used_[shared] = true;
        return true;
    }

    const LevelData& level_;
    bool isOlderGame_;
    std::vector<bool> walked_; ///< by offset in the mesh data
    MeshBudget budget_;
    std::vector<bool> used_; ///< by texture index
    std::string unknown_;
};

} // namespace

std::optional<std::vector<std::int32_t>> CountTextInfos(const LevelData& level, Reporter& report)
{
    Census census(level);
    for (std::size_t i = 0; i < level.MeshPointers.size(); ++i) {
        try {
            if (const char* kind = census.Walk(level.MeshPointers[i])) {
                report.Message(std::string("Unknown texture found in ") + kind + "!", kAppTitle,
                               "mesh " + std::to_string(i) + ", " + census.Unknown());
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
    report.Stop("Mesh " + std::to_string(number) + " is damaged - can't continue!", kAppTitle,
                failure.what());
}

} // namespace morlik
