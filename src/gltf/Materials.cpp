#include "gltf/Materials.h"

#include "base/Narrow.h"

namespace morlik
{

namespace
{

constexpr const char* kUnlit = "KHR_materials_unlit";

} // namespace

int Materials::NumberOf(const Finish& finish)
{
    auto& tables = document_.Tables;
    const auto [entry, isNew] = numbers_.try_emplace(finish, narrow<int>(tables.materials.size()));
    if (!isNew)
        return entry->second;
    if (tables.textures.empty())
        AddTexture();
    tinygltf::Material material;
    material.name = finish.Adds ? "additive" : finish.HasHoles ? "mask" : "opaque";
    material.alphaMode = finish.Adds ? "BLEND" : finish.HasHoles ? "MASK" : "OPAQUE";
    material.doubleSided = options_.DoubleSided;
    material.pbrMetallicRoughness.baseColorTexture.index = 0;
    material.pbrMetallicRoughness.metallicFactor = 0;
    tinygltf::Value::Object extras;
    if (finish.Adds)
        extras["additive"] = tinygltf::Value(true);
    if (finish.Shine != 0) {
        extras["shine"] = tinygltf::Value(int{finish.Shine});
        material.name += " shine " + std::to_string(finish.Shine);
    }
    if (!extras.empty())
        material.extras = tinygltf::Value(std::move(extras));
    if (!options_.IsLit || finish.Adds) { // what adds light has no shade
        material.extensions[kUnlit] = tinygltf::Value(tinygltf::Value::Object());
        tables.extensionsUsed = {kUnlit};
    }
    tables.materials.push_back(std::move(material));
    return entry->second;
}

void Materials::AddTexture()
{
    tinygltf::Sampler sampler;
    sampler.magFilter =
        options_.IsSmooth ? TINYGLTF_TEXTURE_FILTER_LINEAR : TINYGLTF_TEXTURE_FILTER_NEAREST;
    sampler.minFilter = sampler.magFilter;
    sampler.wrapS = TINYGLTF_TEXTURE_WRAP_CLAMP_TO_EDGE;
    sampler.wrapT = sampler.wrapS;
    document_.Tables.samplers.push_back(std::move(sampler));
    tinygltf::Texture texture;
    texture.sampler = 0;
    texture.source = 0;
    document_.Tables.textures.push_back(std::move(texture));
}

} // namespace morlik
