#include "base/Narrow.h"
#include "samples/MainSfx.h"
#include "samples/Models.h"

namespace morlik::samples
{

namespace
{

constexpr std::int16_t kMillSound = 59;

/// Two squares and, cut into triangles, a third.
void AddRoom(LevelContent& level, const ArtTextures& textures, std::size_t sectors)
{
    const std::int16_t top = textures.Of(Art::RockTop);
    level.Rooms.push_back({.Rectangles = {{{0, 1, 2, 3}, textures.Of(Art::Wall)},
                                          {{4, 5, 6, 7}, textures.Of(Art::Floor)}},
                           .Triangles = {{{8, 9, 11}, top}, {{10, 11, 9}, top}},
                           .NumVertices = 12,
                           .NumZSectors = sectors,
                           .NumXSectors = sectors + 1,
                           .NumOthers = 2});
}

SpriteTexture SpriteOf(Art art)
{
    const TextureBox box = BoxOf(art);
    return {.Tile = box.Tile,
            .X = narrow<std::uint8_t>(box.X),
            .Y = narrow<std::uint8_t>(box.Y),
            .Width = narrow<std::uint16_t>((box.Width - 1) * 256 + 255),
            .Height = narrow<std::uint16_t>((box.Height - 1) * 256 + 255),
            .Sides = {Word(-box.Width * 4), Word(-box.Height * 8), Word(box.Width * 4), 0}};
}

/// `SampleIndices` name a sample by its offset in the sample data (I), its place in `main.sfx` (II
/// and III), here in another order than the file's, or its number (IV and V).
void AddSounds(LevelContent& level)
{
    constexpr std::size_t kUsedSamples = 11;
    auto samples = SampleSounds();
    std::size_t offset = 0;
    for (std::size_t s = 0; s < kUsedSamples; ++s) {
        const std::size_t place = HasMainSFX(level.Game) ? (s * 5 + 1) % samples.size() : s;
        level.SampleIndices.push_back(
            narrow<std::int32_t>(IsFirstGame(level.Game) ? offset : place));
        offset += samples.at(s).size();
    }
    samples.resize(HasMainSFX(level.Game) ? 0 : kUsedSamples);
    level.Samples = std::move(samples);

    constexpr std::int16_t kLooped = 3;
    const auto detail = [](std::int16_t first, int count, std::int16_t mode = 0) {
        return SoundDetail{
            .Sample = first, .Raw = {0x6000, 0}, .Characteristics = Word(count << 2 | mode)};
    };
    level.SoundDetails = {detail(0, 4), detail(4, 1), detail(5, 1), detail(6, 2, kLooped),
                          detail(8, 1), detail(9, 2), detail(0, 0)};
    level.SoundMap[kStepSound] = 0;
    level.SoundMap[64] = level.SoundMap[65] = 1; // two slots with one detail
    level.SoundMap[38] = 2;
    level.SoundMap[kMillSound] = 3;
    level.SoundMap[70] = 4; // no slot names detail 5
    level.SoundMap[80] = 6; // which has no samples
}

/// Object numbers by game, all of them with a name in the catalogue: medipack, crate, mill,
/// horizon (-1 where the game has none), pistols, camera target.
std::array<std::int32_t, 6> ObjectIDsOf(VersionCode game)
{
    if (game == kTR2)
        return {171, 67, 95, 254, 157, 243};
    if (game == kTR3)
        return {176, 97, 120, 355, 160, 304};
    if (game == kTR4)
        return {369, 156, 140, 459, 349, 422};
    if (game == kTR5)
        return {350, 137, 129, 454, 334, 409};
    return {108, 48, 74, -1, 99, 169};
}

MeshContent BoxMesh(const Vertex& least, const Vertex& greatest, std::int16_t texture)
{
    MeshContent mesh;
    AddBox(mesh, least, greatest, texture);
    return mesh;
}

void AddStill(LevelContent& level, std::int32_t objectID, MeshContent mesh)
{
    AddMoveable(level, {.ObjectID = objectID, .Meshes = {AddShape(level, std::move(mesh))}});
}

/// Shiny sides in Tomb Raider IV and V; two of them have a texture with the box of another.
MeshContent CrateMesh(const ArtTextures& textures)
{
    MeshContent mesh = BoxMesh({-512, -1024, -512}, {512, 0, 512}, textures.Of(Art::Crate));
    mesh.Rectangles[1].Texture = mesh.Rectangles[3].Texture = textures.Of(Art::CrateAgain);
    for (MeshFace& face : mesh.Rectangles)
        face.Attribute = 0x24;
    return mesh;
}

/// A tower whose roof turns when it runs, seen from above and from below. One way out leads into an
/// animation of Lara, which an object set does not allow.
void AddMill(LevelContent& level, std::int32_t objectID, const ArtTextures& textures)
{
    constexpr int kSteps = 16;
    MeshContent roof;
    AddCone(roof, 640, -400, 0, true, textures.Of(Art::Sail), 1);
    AddCone(roof, 640, -400, 0, false, textures.Of(Art::Sail), 1);
    FrameContent frame{.Box = {-640, 640, -1600, 0, -640, 640}, .Rotations = {{}, {}}};
    const AnimationContent rest{
        .Record = {.FrameRate = 1},
        .Frames = {frame},
        .Ways = {{std::int16_t{1}, {0, 0, 1, 1}}, {std::int16_t{2}, {0, 0, -1, 0}}}};
    AnimationContent turning{
        .Record = {.FrameRate = 2, .State = 1, .NextAnimation = 1, .NumAnimCommands = 1},
        .Ways = {{std::int16_t{0}, {1, 2 * kSteps, 0, 0}}},
        .Commands = {5, 1, kMillSound}};
    for (int step = 0; step < kSteps; ++step) {
        frame.Rotations[1].Y = step * 1024 / kSteps;
        turning.Frames.push_back(frame);
    }
    const auto tower = BoxMesh({-280, -1200, -280}, {280, 0, 280}, textures.Of(Art::Wall));
    AddMoveable(level, {.ObjectID = objectID,
                        .Meshes = {AddShape(level, tower), AddShape(level, std::move(roof))},
                        .Joints = {{0, 0, -1200, 0}},
                        .Animations = {rest, std::move(turning)}});
}

/// A dome, seen from within, and the ground with a rim below eye level. In the older games they
/// are plain colours, that of the ground with no blue; later games have textures.
MeshContent HorizonMesh(const LevelContent& level, const ArtTextures& textures)
{
    constexpr std::int16_t kRadius = 3000;
    constexpr std::int16_t kRim = 400;
    MeshContent mesh;
    AddCone(mesh, kRadius, -2000, kRim, false, textures.Of(Art::RockTop));
    if (IsOlderGame(level.Game))
        PaintFaces(mesh, ColourWord(level.Game, Shaded(Ink::Sky, kFullShade)));
    AddCone(mesh, kRadius, kRim, kRim, true, textures.Of(Art::RockTop));
    if (IsOlderGame(level.Game))
        PaintFaces(mesh, ColourWord(level.Game, Shaded(Ink::Red, kFullShade / 3)));
    return mesh;
}

/// A boulder of two; the older games have one of them in plain colours, with faces of all kinds.
MeshContent RockMesh(const LevelContent& level, const ArtTextures& textures)
{
    MeshContent mesh = BoxMesh({-400, -200, -400}, {400, 0, 400}, textures.Of(Art::Rock));
    AddCone(mesh, 400, -500, -200, true, textures.Of(Art::RockTop));
    if (IsOlderGame(level.Game))
        PaintFaces(mesh, ColourWord(level.Game, Shaded(Ink::Stone, kFullShade / 2)));
    AddBox(mesh, {-600, -150, -500}, {-300, 0, -200}, textures.Of(Art::Rock));
    AddCone(mesh, 300, -700, -400, true, textures.Of(Art::RockTopMirrored));
    return mesh;
}

/// Two boards with transparent pixels that cross each other.
MeshContent PlantMesh(const ArtTextures& textures)
{
    const std::int16_t leaf = textures.Of(Art::Leaf);
    MeshContent mesh;
    AddBoard(mesh, {-300, -500, 0}, {300, 0, 0}, leaf, leaf);
    AddBoard(mesh, {0, -500, -300}, {0, 0, 300}, leaf, leaf);
    return mesh;
}

/// A post with a board on it, whose attribute is for Tomb Raider IV and V.
MeshContent PostMesh(const ArtTextures& textures, Art front, Art back, std::int16_t attribute)
{
    MeshContent mesh = BoxMesh({-30, -600, -30}, {30, 0, 30}, textures.Of(Art::Steel));
    AddBoard(mesh, {-300, -700, -34}, {300, -400, -34}, textures.Of(front), textures.Of(back));
    mesh.Rectangles.at(6).Attribute = mesh.Rectangles.at(7).Attribute = attribute; // the board
    return mesh;
}

/// The other moveables, most of them without animations.
void AddObjects(LevelContent& level, const ArtTextures& textures)
{
    const auto [medipack, crate, mill, horizon, pistols, target] = ObjectIDsOf(level.Game);
    const std::int16_t steel = textures.Of(Art::Steel);
    AddStill(level, medipack, BoxMesh({-60, -90, -60}, {60, 0, 60}, steel));
    AddStill(level, crate, CrateMesh(textures));
    AddMill(level, mill, textures);
    if (horizon >= 0)
        AddStill(level, horizon, HorizonMesh(level, textures));
    AddStill(level, pistols, BoxMesh({-110, -60, -12}, {60, -30, 12}, steel));
    AddStill(level, target, BoxMesh({-64, -64, -64}, {64, 64, 64}, steel));
}

void AddStaticMeshes(LevelContent& level, const ArtTextures& textures, bool many)
{
    const auto add = [&](const MeshContent& mesh) {
        return AddShape(level, mesh, Shading::Lights);
    };
    const auto plant = add(PlantMesh(textures));
    const auto rock = add(RockMesh(level, textures));
    AddStaticMesh(level, 0, plant);
    // Both sides of the board point the same way: the back has the mirrored arrow.
    AddStaticMesh(level, 10, add(PostMesh(textures, Art::Arrow, Art::MirroredArrow, 0)));
    AddStaticMesh(level, 11, add(PostMesh(textures, Art::Glow, Art::Glow, 1)));
    AddStaticMesh(level, 20, rock);
    // Tomb Raider V counts its higher ones ten lower than the editor: 49 is the last that stays.
    AddStaticMesh(level, 49, rock);
    AddStaticMesh(level, 50, plant);
    constexpr std::size_t kMany = 64;
    for (std::int32_t id = 51; many && level.StaticMeshes.size() < kMany; ++id)
        AddStaticMesh(level, id, plant);
}

} // namespace

LevelContent MakeRichLevel(VersionCode game, const RichOptions& options)
{
    LevelContent level = EmptyLevel(game);
    level.LaraType = game == kTR5 ? 3 : 0;
    level.WeatherType = game == kTR5 ? 1 : 0;
    SetPalette(level);
    const auto tiles = DrawTiles();
    ArtTextures textures;
    for (std::size_t time = 0; time < options.Times; ++time) {
        textures.First = level.ObjectTextures.size() + level.ObjectTexturesTR45.size();
        AddArtTextures(level, time * kArtTiles);
        AddTiles(level, tiles);
        AddRoom(level, textures, 4);
        AddRoom(level, textures, 1);
        AddLara(level, textures);
        AddObjects(level, textures);
    }
    if (!IsOlderGame(game)) {
        level.NumRoomTiles = 1;
        level.NumObjectTiles = narrow<std::int16_t>(options.Times * kArtTiles - 1);
        level.NumBumpTiles = 2;
        AddTiles(level, std::span(tiles).first(2 * std::size_t{kTilePixels}));
    }
    AddStaticMeshes(level, textures, options.ManyStatics);
    level.SpriteTextures = {SpriteOf(Art::Flame), SpriteOf(Art::Leaf), SpriteOf(Art::Steel)};
    level.SpriteSequences = {{.ObjectID = 180, .NegatedCount = -2, .FirstTexture = 0},
                             {.ObjectID = 191, .NegatedCount = -1, .FirstTexture = 2}};
    level.NumOthers = 1;
    AddSounds(level);
    return level;
}

} // namespace morlik::samples
