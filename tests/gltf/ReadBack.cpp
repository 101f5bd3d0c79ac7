#include "tests/gltf/ReadBack.h"

#include "tests/support/ReadPng.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace morlik::test
{

namespace
{

bool KeepBytes(tinygltf::Image* image, int, std::string*, std::string*, int, int,
               const unsigned char* bytes, int size, void*)
{
    image->image.assign(bytes, bytes + size);
    return true;
}

/// A part of a value at its place in the buffer.
double PartAt(const unsigned char* at, const tinygltf::Accessor& accessor)
{
    const auto read = [&](auto part, double whole) {
        std::memcpy(&part, at, sizeof(part));
        return static_cast<double>(part) / (accessor.normalized ? whole : 1.0);
    };
    switch (accessor.componentType) {
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return read(std::uint8_t{}, 255);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return read(std::uint16_t{}, 65535);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT:
        return read(std::uint32_t{}, 1);
    default:
        return read(float{}, 1);
    }
}

Transform TransformOf(const std::vector<double>& move, const std::vector<double>& q)
{
    const double x = q[0];
    const double y = q[1];
    const double z = q[2];
    const double w = q[3];
    return {.Turn = {{{1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y)},
                      {2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x)},
                      {2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y)}}},
            .Shift = {move[0], move[1], move[2]}};
}

/// Between two keys: on a line, or, of turns, on the arc from one to the other.
std::vector<double> Mix(const std::vector<double>& from, const std::vector<double>& to,
                        double share)
{
    double cosine = 0;
    for (std::size_t i = 0; i < from.size(); ++i)
        cosine += from[i] * to[i];
    EXPECT_TRUE(from.size() == 3 || cosine > -1e-6) << "a longer way: " << cosine;
    const double angle = std::acos(std::clamp(cosine, -1.0, 1.0));
    const bool isArc = from.size() == 4 && angle > 1e-4;
    std::vector<double> mixed;
    for (std::size_t i = 0; i < from.size(); ++i)
        mixed.push_back(
            isArc ? (std::sin((1 - share) * angle) * from[i] + std::sin(share * angle) * to[i]) /
                        std::sin(angle)
                  : from[i] + (to[i] - from[i]) * share);
    return mixed;
}

} // namespace

ReadGltf ReadGltfFile(const std::string& path)
{
    ReadGltf file;
    tinygltf::TinyGLTF reader;
    reader.SetImageLoader(KeepBytes, nullptr);
    std::string errors;
    std::string warnings;
    const bool isText = path.ends_with(".gltf");
    EXPECT_TRUE(isText ? reader.LoadASCIIFromFile(&file.Tables, &errors, &warnings, path)
                       : reader.LoadBinaryFromFile(&file.Tables, &errors, &warnings, path))
        << path;
    EXPECT_EQ(errors + warnings, "") << path;
    for (const tinygltf::Image& image : file.Tables.images)
        file.Image = DecodePNG(std::as_bytes(std::span(image.image)));
    return file;
}

std::vector<std::vector<double>> ValuesOf(const tinygltf::Model& tables, int accessor)
{
    const auto& entry = tables.accessors.at(static_cast<std::size_t>(accessor));
    const auto& view = tables.bufferViews.at(static_cast<std::size_t>(entry.bufferView));
    const auto stride = static_cast<std::size_t>(entry.ByteStride(view));
    const auto width = static_cast<std::size_t>(
        tinygltf::GetComponentSizeInBytes(static_cast<std::uint32_t>(entry.componentType)));
    const auto parts = static_cast<std::size_t>(
        tinygltf::GetNumComponentsInType(static_cast<std::uint32_t>(entry.type)));
    std::vector<std::vector<double>> values(entry.count);
    for (std::size_t i = 0; i < entry.count; ++i)
        for (std::size_t part = 0; part < parts; ++part)
            values[i].push_back(
                PartAt(&tables.buffers[0].data.at(view.byteOffset + entry.byteOffset + i * stride +
                                                  part * width),
                       entry));
    return values;
}

void ShownTriangle::TurnToFirst()
{
    const auto least = std::min_element(Places.begin(), Places.end()) - Places.begin();
    std::rotate(Places.begin(), Places.begin() + least, Places.end());
    std::rotate(Colours.begin(), Colours.begin() + least, Colours.end());
}

std::vector<ShownTriangle> TrianglesOf(const ReadGltf& file, int mesh)
{
    std::vector<ShownTriangle> shown;
    for (const auto& primitive : file.Tables.meshes.at(static_cast<std::size_t>(mesh)).primitives) {
        const auto places = ValuesOf(file.Tables, primitive.attributes.at("POSITION"));
        const auto corners = ValuesOf(file.Tables, primitive.attributes.at("TEXCOORD_0"));
        const auto indices = ValuesOf(file.Tables, primitive.indices);
        for (std::size_t i = 0; i < indices.size(); ++i) {
            if (i % 3 == 0)
                shown.emplace_back();
            const auto vertex = static_cast<std::size_t>(indices[i][0]);
            const auto& place = places.at(vertex);
            const auto unit = [](double metres) {
                return static_cast<std::int32_t>(std::lround(metres * 512));
            };
            shown.back().Places[i % 3] = {-unit(place[0]), -unit(place[1]), unit(place[2])};
            const auto pixel = [](double share, std::int32_t side) {
                const double middle = share * side - 0.5;
                EXPECT_EQ(middle, std::floor(middle)) << "not the middle of a pixel";
                return static_cast<std::int32_t>(middle);
            };
            shown.back().Colours[i % 3] = Shown(file.Image.Pixels.at(
                file.Image.At(pixel(corners.at(vertex)[0], file.Image.Width),
                              pixel(corners.at(vertex)[1], file.Image.Height))));
        }
    }
    for (ShownTriangle& triangle : shown)
        triangle.TurnToFirst();
    std::sort(shown.begin(), shown.end());
    return shown;
}

std::vector<Transform> NodesAt(const tinygltf::Model& tables, std::optional<std::size_t> animation,
                               double frame)
{
    std::vector<std::vector<double>> moves;
    std::vector<std::vector<double>> turns;
    for (const tinygltf::Node& node : tables.nodes) {
        moves.push_back(node.translation.empty() ? std::vector<double>(3) : node.translation);
        turns.push_back(node.rotation.empty() ? std::vector<double>{0, 0, 0, 1} : node.rotation);
    }
    if (animation)
        for (const auto& channel : tables.animations.at(*animation).channels) {
            const auto& sampler = tables.animations[*animation].samplers.at(
                static_cast<std::size_t>(channel.sampler));
            const auto times = ValuesOf(tables, sampler.input);
            const auto values = ValuesOf(tables, sampler.output);
            EXPECT_EQ(times.size(), values.size());
            std::size_t key = 0;
            while (key + 2 < times.size() && times[key + 1][0] * 30 <= frame)
                ++key;
            const std::size_t next = std::min(key + 1, times.size() - 1);
            const double span = (times[next][0] - times[key][0]) * 30;
            const double share =
                span > 0 ? std::clamp((frame - times[key][0] * 30) / span, 0.0, 1.0) : 0;
            auto& target = channel.target_path == "translation" ? moves : turns;
            target.at(static_cast<std::size_t>(channel.target_node)) =
                Mix(values[key], values[next], share);
        }
    std::vector<Transform> places(tables.nodes.size());
    const std::function<void(int, const Transform&)> place = [&](int number,
                                                                 const Transform& above) {
        const auto node = static_cast<std::size_t>(number);
        places[node] = above * TransformOf(moves[node], turns[node]);
        for (const int child : tables.nodes[node].children)
            place(child, places[node]);
    };
    for (const tinygltf::Scene& scene : tables.scenes)
        for (const int root : scene.nodes)
            place(root, {});
    return places;
}

} // namespace morlik::test
