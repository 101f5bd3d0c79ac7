#pragma once

#include "base/Narrow.h"
#include "set/ObjectSet.h"
#include "tests/support/Failures.h"
#include "tests/support/ScriptedHost.h"

#include <gtest/gtest.h>
#include <string>

namespace morlik::test
{

inline void AddMeshes(ObjectSet& set, const std::vector<WadMesh>& meshes)
{
    ScriptedHost host;
    Reporter report(host);
    for (const WadMesh& mesh : meshes)
        AppendWadMesh(set.Meshes, mesh, report);
}

/// A set of Tomb Raider IV with two textures, of which the second lies on the box from 10, 20 to
/// 15, 27, two tiles, these meshes and nothing else.
inline ObjectSet MadeSet(const std::vector<WadMesh>& meshes = {})
{
    ObjectSet set;
    set.Game = kTR4;
    set.Textures = {{}, {.X = 10, .Y = 20, .Tile = 1, .Width = 5, .Height = 7}};
    set.Tiles = SetTiles(std::int64_t{2} * kTileBytes, nullptr);
    AddMeshes(set, meshes);
    return set;
}

/// Four vertices with normals, and a rectangle with texture 1.
inline WadMesh MadeMesh()
{
    WadMesh mesh;
    mesh.Vertices = {{0, 0, 0}, {8, 0, 0}, {8, 0, 9}, {0, 0, 9}};
    mesh.NumNormals = 4;
    mesh.Normals.resize(4, {0, -16300, 0});
    mesh.Faces = {{.Type = kFaceRectangle, .Vertices = {0, 1, 2, 3}, .Texture = 1}};
    return mesh;
}

/// `work` fails with a text that holds `failure`; it doesn't where that is empty.
template <class Work>
void ExpectFailure(const std::string& failure, Work work)
{
    const auto text = MessageOf<ReadFailure>(work);
    EXPECT_EQ(text.empty(), failure.empty()) << text;
    EXPECT_PRED2(Has, text, failure);
}

} // namespace morlik::test
