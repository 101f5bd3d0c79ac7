#include "gltf/Document.h"

#include "base/Narrow.h"

#include <algorithm>
#include <bit>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string_view>
#include <utility>

namespace morlik
{

namespace
{

static_assert(std::endian::native == std::endian::little, "the values of a buffer are that");

constexpr std::size_t kAlignment = 4; ///< of all views

/// How the values of a kind are told.
struct Form
{
    int Component;
    int Type;
    std::size_t Bytes;
    int Target = 0; ///< attributes of vertices, whose views tell the width of a value, or indices
    bool IsShare = false;
};

constexpr int kFloat = TINYGLTF_COMPONENT_TYPE_FLOAT;
constexpr int kWord = TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT;
constexpr int kAttribute = TINYGLTF_TARGET_ARRAY_BUFFER;
constexpr int kIndex = TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER;

constexpr std::array<Form, kNumValueKinds> kForms{{
    {.Component = kWord, .Type = TINYGLTF_TYPE_SCALAR, .Bytes = 2, .Target = kIndex},
    {.Component = TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT,
     .Type = TINYGLTF_TYPE_SCALAR,
     .Bytes = 4,
     .Target = kIndex},
    {.Component = kFloat, .Type = TINYGLTF_TYPE_VEC3, .Bytes = 12, .Target = kAttribute},
    {.Component = kFloat, .Type = TINYGLTF_TYPE_VEC3, .Bytes = 12, .Target = kAttribute},
    {.Component = kFloat, .Type = TINYGLTF_TYPE_VEC2, .Bytes = 8, .Target = kAttribute},
    {.Component = kWord,
     .Type = TINYGLTF_TYPE_VEC4,
     .Bytes = 8,
     .Target = kAttribute,
     .IsShare = true},
    {.Component = kWord, .Type = TINYGLTF_TYPE_VEC4, .Bytes = 8, .Target = kAttribute},
    {.Component = TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE,
     .Type = TINYGLTF_TYPE_VEC4,
     .Bytes = 4,
     .Target = kAttribute,
     .IsShare = true},
    {.Component = kFloat, .Type = TINYGLTF_TYPE_MAT4, .Bytes = 64},
    {.Component = kFloat, .Type = TINYGLTF_TYPE_SCALAR, .Bytes = 4},
    {.Component = kFloat, .Type = TINYGLTF_TYPE_VEC3, .Bytes = 12},
    {.Component = kFloat, .Type = TINYGLTF_TYPE_VEC4, .Bytes = 16},
}};

/// Appends the bytes as a view of the buffer and gives its number.
int AddView(tinygltf::Model& tables, std::span<const std::byte> bytes, const Form& form)
{
    auto& buffer = tables.buffers[0].data;
    buffer.resize((buffer.size() + kAlignment - 1) / kAlignment * kAlignment);
    tinygltf::BufferView view;
    view.buffer = 0;
    view.byteOffset = buffer.size();
    view.byteLength = bytes.size();
    view.target = form.Target;
    view.byteStride = form.Target == kAttribute ? form.Bytes : 0;
    const auto* const first = reinterpret_cast<const unsigned char*>(bytes.data());
    buffer.insert(buffer.end(), first, first + bytes.size());
    tables.bufferViews.push_back(std::move(view));
    return narrow<int>(tables.bufferViews.size() - 1);
}

/// The name of a file as a URI: all bytes but plain letters, digits and a few marks as %XX.
std::string UriOf(const std::string& name)
{
    constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string uri;
    for (const char letter : name) {
        const auto byte = static_cast<unsigned char>(letter);
        if (kPlain.find(letter) != std::string_view::npos)
            uri += letter;
        else
            (uri += '%') += {kDigits[byte / kDigits.size()], kDigits[byte % kDigits.size()]};
    }
    return uri;
}

/// The JSON of a document whose buffer is a file of its own.
std::string TextInParts(const std::string& text, const std::string& bufferName)
{
    auto json = nlohmann::json::parse(text);
    if (json.contains("buffers"))
        json["buffers"][0]["uri"] = bufferName;
    return json.dump(1) + "\n";
}

} // namespace

Document::Document()
{
    Tables.asset.version = "2.0";
    Tables.asset.generator = "Morlik";
    Tables.defaultScene = 0;
}

tinygltf::Accessor Document::Begin(ValueKind kind, std::size_t count) const
{
    const auto index = static_cast<std::size_t>(kind);
    tinygltf::Accessor accessor;
    accessor.bufferView = narrow<int>(index); // until `Finish` knows which ones there are
    accessor.byteOffset = streams_[index].size();
    accessor.count = count;
    accessor.componentType = kForms[index].Component;
    accessor.type = kForms[index].Type;
    accessor.normalized = kForms[index].IsShare;
    return accessor;
}

int Document::End(tinygltf::Accessor accessor)
{
    Tables.accessors.push_back(std::move(accessor));
    return narrow<int>(Tables.accessors.size() - 1);
}

int Document::AddIndices(std::span<const std::uint32_t> indices)
{
    constexpr std::uint32_t kMostWord = 0xfffe; // the one above has a meaning of its own
    if (*std::max_element(indices.begin(), indices.end()) > kMostWord) {
        std::vector<std::array<std::uint32_t, 1>> values;
        for (const std::uint32_t index : indices)
            values.push_back({index});
        return Add(ValueKind::WideIndices, values);
    }
    std::vector<std::array<std::uint16_t, 1>> values;
    for (const std::uint32_t index : indices)
        values.push_back({static_cast<std::uint16_t>(index)});
    return Add(ValueKind::Indices, values);
}

DocumentFiles Document::Finish(std::vector<std::byte> image, const std::string& name)
{
    const bool inParts = !name.empty();
    Tables.buffers.emplace_back();
    std::array<int, kNumValueKinds> views{};
    for (std::size_t kind = 0; kind < kNumValueKinds; ++kind)
        if (!streams_[kind].empty()) {
            const auto stream = std::exchange(streams_[kind], {});
            views[kind] = AddView(Tables, stream, kForms[kind]);
        }
    for (tinygltf::Accessor& accessor : Tables.accessors)
        accessor.bufferView = views[static_cast<std::size_t>(accessor.bufferView)];
    if (!image.empty()) {
        tinygltf::Image entry;
        entry.mimeType = "image/png";
        if (inParts)
            entry.uri = UriOf(name + ".png");
        else
            entry.bufferView = AddView(Tables, image, {});
        Tables.images.push_back(std::move(entry));
    }
    if (Tables.buffers[0].data.empty())
        Tables.buffers.clear();

    DocumentFiles files;
    if (inParts) {
        if (!Tables.buffers.empty()) {
            const auto bytes = std::as_bytes(std::span(Tables.buffers[0].data));
            files.Buffer.assign(bytes.begin(), bytes.end());
        }
        files.Image = std::move(image);
    }
    tinygltf::TinyGLTF writer;
    std::ostringstream out;
    writer.WriteGltfSceneToStream(&Tables, out, false, true);
    files.Main = std::move(out).str();
    if (inParts) {
        // A binary file begins with three words and the length and the kind of the JSON.
        constexpr std::size_t kLengthAt = 12;
        constexpr std::size_t kTextAt = 20;
        std::uint32_t length = 0;
        std::memcpy(&length, &files.Main[kLengthAt], sizeof(length));
        files.Main = TextInParts(files.Main.substr(kTextAt, length), UriOf(name + ".bin"));
    }
    return files;
}

} // namespace morlik
