#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <tiny_gltf.h>
#include <type_traits>
#include <vector>

namespace morlik
{

/// What the values of a file's buffer are for. Those of one kind stand together, each set of them
/// an accessor, all in one view.
enum class ValueKind : std::uint8_t
{
    Indices,
    WideIndices,
    Positions,
    Normals,
    Corners,
    Lights,
    Joints,
    Weights,
    Matrices,
    Times,
    Moves,
    Turns,
};
constexpr std::size_t kNumValueKinds = 12;

/// The files of a document. In a `.glb` all stands in `Main`.
struct DocumentFiles
{
    std::string Main; ///< the JSON, or all
    std::vector<std::byte> Buffer;
    std::vector<std::byte> Image;
};

/// A glTF file while it is made: its tables, and the values that they lead to.
class Document
{
public:
    Document();

    tinygltf::Model Tables;

    /// Adds values as an accessor and gives its number. `bounds` tells their least and greatest
    /// ones there, too.
    template <class Component, std::size_t N>
    int Add(ValueKind kind, std::span<const std::array<Component, N>> values, bool bounds = false)
    {
        static_assert(std::is_floating_point_v<Component> || std::is_unsigned_v<Component>);
        tinygltf::Accessor accessor = Begin(kind, values.size());
        const auto bytes = std::as_bytes(values);
        auto& stream = streams_[static_cast<std::size_t>(kind)];
        stream.insert(stream.end(), bytes.begin(), bytes.end());
        for (std::size_t part = 0; bounds && part < N; ++part) {
            Component least = values[0][part];
            Component greatest = least;
            for (const auto& value : values) {
                least = value[part] < least ? value[part] : least;
                greatest = value[part] > greatest ? value[part] : greatest;
            }
            accessor.minValues.push_back(static_cast<double>(least));
            accessor.maxValues.push_back(static_cast<double>(greatest));
        }
        return End(std::move(accessor));
    }
    template <class Component, std::size_t N>
    int Add(ValueKind kind, const std::vector<std::array<Component, N>>& values,
            bool bounds = false)
    {
        return Add(kind, std::span(values), bounds);
    }
    /// Vertices of triangles, in two bytes each where that suffices.
    int AddIndices(std::span<const std::uint32_t> indices);

    /// The finished files. `image` are the bytes of the only picture, if there is one; `name` is
    /// what those of a file in parts are called, without their ending: empty for a `.glb`.
    DocumentFiles Finish(std::vector<std::byte> image, const std::string& name);

private:
    tinygltf::Accessor Begin(ValueKind kind, std::size_t count) const;
    int End(tinygltf::Accessor accessor);

    std::array<std::vector<std::byte>, kNumValueKinds> streams_;
};

} // namespace morlik
