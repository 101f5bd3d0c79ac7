#include "base/Narrow.h"
#include "samples/Models.h"
#include "samples/RichParts.h"
#include "samples/Shapes.h"

#include <algorithm>
#include <cstring>

namespace morlik::samples
{

namespace
{

/// Numbers of the static meshes. Tomb Raider V counts its higher ones ten lower than the editor:
/// 49 is the last that stays.
constexpr std::int32_t kPlant = 0;
constexpr std::int32_t kSignpost = 10;
constexpr std::int32_t kLamp = 11;
constexpr std::int32_t kRock = 20;
constexpr std::int32_t kPillar = 30;
constexpr std::int32_t kSecondPillar = 31;
constexpr std::int32_t kLastKept = 49;
constexpr std::int32_t kFirstRaised = 50;

std::size_t AddLit(LevelContent& level, MeshContent mesh)
{
    FinishMesh(mesh, Shading::Lights);
    return AddMesh(level, std::move(mesh));
}

MeshContent PlantMesh(const RichTextures& textures)
{
    const std::int16_t leaf = textures.Of(Art::Leaf);
    MeshContent mesh;
    AddBoard(mesh, {{{-300, -500, 0}, {300, -500, 0}, {300, 0, 0}, {-300, 0, 0}}}, leaf, leaf);
    AddBoard(mesh, {{{0, -500, -300}, {0, -500, 300}, {0, 0, 300}, {0, 0, -300}}}, leaf, leaf);
    return mesh;
}

/// Both sides of the board point the same way: the back has the mirrored arrow.
MeshContent SignpostMesh(const RichTextures& textures)
{
    MeshContent mesh;
    AddBox(mesh, {-30, -600, -30}, {30, 0, 30}, BoxSkin::Of(textures.Of(Art::Boot)));
    AddBoard(mesh, {{{-300, -700, -34}, {300, -700, -34}, {300, -400, -34}, {-300, -400, -34}}},
             textures.Of(Art::ArrowBoard), textures.MirroredArrow);
    return mesh;
}

/// A glowing board, whose faces blend with what lies behind.
MeshContent LampMesh(const RichTextures& textures)
{
    MeshContent mesh;
    AddBox(mesh, {-20, -400, -20}, {20, 0, 20}, BoxSkin::Of(textures.Of(Art::Blade)));
    AddBoard(mesh, {{{-200, -600, 0}, {200, -600, 0}, {200, -200, 0}, {-200, -200, 0}}},
             textures.Of(Art::Glow), textures.Of(Art::Glow));
    constexpr std::int16_t kBlend = 1; // attribute word of the last two faces
    mesh.Rectangles.back().Attribute = kBlend;
    mesh.Rectangles[mesh.Rectangles.size() - 2].Attribute = kBlend;
    return mesh;
}

/// A boulder; the older games have it half in plain colours, with faces of all four kinds.
MeshContent RockMesh(const LevelContent& level, const RichTextures& textures)
{
    MeshContent mesh;
    const auto paint = [&](int shade) {
        if (IsOlderGame(level.Game))
            PaintFaces(mesh, ColourWord(level.Game, PaletteIndex(Ink::Stone, shade)));
    };
    AddRoof(mesh, {-400, -500, -300}, {400, -200, 300}, textures.Rock);
    paint(11);
    AddBox(mesh, {-400, -200, -300}, {400, 0, 300}, BoxSkin::Of(textures.Of(Art::Rock)));
    paint(7);
    AddRoof(mesh, {300, -300, -500}, {600, 0, -200}, textures.RockMirrored);
    AddBox(mesh, {-600, -150, -500}, {-300, 0, -200}, BoxSkin::Of(textures.Of(Art::Rock)));
    return mesh;
}

MeshContent PillarMesh(const RichTextures& textures)
{
    MeshContent mesh;
    constexpr std::int16_t kRadius = 180;
    constexpr std::int16_t kTop = -1200;
    AddRing(mesh, kRadius, kTop, 0, textures.Of(Art::Pillar));
    AddLid(mesh, kRadius, kTop, true, textures.PillarLid);
    AddLid(mesh, kRadius, 0, false, textures.PillarLid);
    return mesh;
}

bool HasStatic(const LevelContent& level, std::int32_t objectID)
{
    return std::any_of(level.StaticMeshes.begin(), level.StaticMeshes.end(),
                       [objectID](const StaticMesh& mesh) { return mesh.ObjectID == objectID; });
}

/// A room of walls, floor and ceiling, `sectors` sectors long and wide.
class RoomBuilder
{
public:
    RoomBuilder(std::int16_t sectors, std::int16_t height)
        : side_(sectors * kSector), height_(height)
    {
        room_.YTop = -height;
        room_.NumZSectors = sectors;
        room_.NumXSectors = sectors;
        room_.Sectors.assign(static_cast<std::size_t>(sectors * sectors),
                             {.Ceiling = static_cast<std::int8_t>(-height / kClick)});
    }

    /// A square of the floor at `y` 0, or of the ceiling.
    void AddSquare(int column, int row, bool ceiling, std::int16_t texture)
    {
        const int x = column * kSector;
        const int z = row * kSector;
        const int far = ceiling ? z : z + kSector;
        const int near = ceiling ? z + kSector : z;
        AddQuad({{{x, far}, {x + kSector, far}, {x + kSector, near}, {x, near}}},
                ceiling ? -height_ : 0, texture);
    }

    /// The square of the floor as two triangles.
    void AddSplitSquare(int column, int row, std::int16_t texture)
    {
        AddSquare(column, row, false, texture);
        const RoomRectangle whole = room_.Rectangles.back();
        room_.Rectangles.pop_back();
        const auto& v = whole.Vertices;
        room_.Triangles.push_back({{v[0], v[1], v[3]}, texture});
        room_.Triangles.push_back({{v[2], v[3], v[1]}, texture});
    }

    /// A wall from one corner of the room's outline to the next.
    void AddWall(int fromX, int fromZ, int toX, int toZ, std::int16_t texture)
    {
        const std::int16_t low = 0;
        const auto high = narrow<std::int16_t>(-height_);
        const std::array<std::int16_t, 4> v{AddVertex(fromX, high, fromZ),
                                            AddVertex(toX, high, toZ), AddVertex(toX, low, toZ),
                                            AddVertex(fromX, low, fromZ)};
        room_.Rectangles.push_back({v, texture});
    }

    int Side() const { return side_; }
    RoomContent& Room() { return room_; }

    static constexpr int kSector = 1024;
    static constexpr int kClick = 256; ///< unit of floor and ceiling heights

private:
    std::int16_t AddVertex(int x, int y, int z)
    {
        constexpr std::int16_t kLit = 0x0c00;
        room_.Vertices.push_back({narrow<std::int16_t>(x), narrow<std::int16_t>(y),
                                  narrow<std::int16_t>(z), kLit, 0, kLit});
        return narrow<std::int16_t>(room_.Vertices.size() - 1);
    }

    void AddQuad(const std::array<std::array<int, 2>, 4>& corners, int y, std::int16_t texture)
    {
        RoomRectangle face;
        face.Texture = texture;
        std::transform(corners.begin(), corners.end(), face.Vertices.begin(),
                       [&](const auto& corner) { return AddVertex(corner[0], y, corner[1]); });
        room_.Rectangles.push_back(face);
    }

    int side_;
    int height_;
    RoomContent room_;
};

/// Floor, ceiling and four walls; one square of the floor is split.
RoomContent MakeRoom(const RichTextures& textures, Art floor)
{
    constexpr std::int16_t kSectors = 4;
    RoomBuilder builder(kSectors, 4 * RoomBuilder::kClick);
    for (int column = 0; column < kSectors; ++column) {
        for (int row = 0; row < kSectors; ++row) {
            if (column + row > 0)
                builder.AddSquare(column, row, false, textures.Of(floor));
            builder.AddSquare(column, row, true, textures.Of(Art::Beams));
        }
    }
    builder.AddSplitSquare(0, 0, textures.Roof);
    const int side = builder.Side();
    const std::int16_t wall = textures.Of(Art::BrickWall);
    builder.AddWall(0, side, side, side, wall);
    builder.AddWall(side, side, side, 0, wall);
    builder.AddWall(side, 0, 0, 0, wall);
    builder.AddWall(0, 0, 0, side, wall);
    return builder.Room();
}

/// The opening in the wall at `x` of a room, toward another one.
RoomPortal PortalAt(std::int16_t room, std::int16_t x, std::int16_t normalX)
{
    return {.AdjoiningRoom = room,
            .Normal = {normalX, 0, 0},
            .Vertices = {{{x, -1024, 1024}, {x, -1024, 3072}, {x, 0, 3072}, {x, 0, 1024}}}};
}

void AddRooms(LevelContent& level, const RichTextures& textures)
{
    constexpr std::int32_t kOrigin = 10240;
    constexpr std::int16_t kSide = 4096;
    RoomContent yard = MakeRoom(textures, Art::Meadow);
    yard.X = kOrigin;
    yard.Z = kOrigin;
    yard.Sprites = {{0, 0}, {5, 2}};
    yard.Portals = {PortalAt(1, kSide, -1)};
    yard.Lights = {{kOrigin + 1024, -900, kOrigin + 1024, 0x1000, 0x1000, 4096, 4096},
                   {kOrigin + 3072, -900, kOrigin + 3072, 0x0800, 0x0800, 2048, 2048}};
    yard.Statics = {{kOrigin + 512, 0, kOrigin + 512, 0x4000, 0x1000, 0x1000, kPillar},
                    {kOrigin + 3584, 0, kOrigin + 512, 0, 0x1000, 0x1000, kSignpost},
                    {kOrigin + 1536, 0, kOrigin + 3584, 0, 0x1000, 0x1000, kPlant}};
    yard.Extra = {1, 2, 3};

    RoomContent hall = MakeRoom(textures, Art::Slabs);
    hall.X = kOrigin + kSide;
    hall.Z = kOrigin;
    hall.Portals = {PortalAt(0, 0, 1)};
    hall.Lights = {{kOrigin + kSide + 2048, -900, kOrigin + 2048, 0x1000, 0x1000, 8192, 8192}};
    hall.Flags = 1;
    level.Rooms = {std::move(yard), std::move(hall)};
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

/// `count` sprites from `first` on.
SpriteSequence SequenceOf(std::int32_t objectID, std::int16_t count, std::int16_t first)
{
    return {.ObjectID = objectID, .NegatedCount = Word(-count), .FirstTexture = first};
}

} // namespace

void AddStaticMeshes(LevelContent& level, const RichTextures& textures, bool many)
{
    const std::size_t plant = AddLit(level, PlantMesh(textures));
    const std::size_t rock = AddLit(level, RockMesh(level, textures));
    const std::size_t pillar = AddLit(level, PillarMesh(textures));
    AddStaticMesh(level, kPlant, plant);
    AddStaticMesh(level, kSignpost, AddLit(level, SignpostMesh(textures)));
    AddStaticMesh(level, kLamp, AddLit(level, LampMesh(textures)));
    AddStaticMesh(level, kRock, rock);
    AddStaticMesh(level, kPillar, pillar);
    AddStaticMesh(level, kSecondPillar, pillar);
    AddStaticMesh(level, kLastKept, rock);
    AddStaticMesh(level, kFirstRaised, plant);
    if (!many)
        return;
    constexpr std::size_t kMany = 64;
    for (std::int32_t id = 0; level.StaticMeshes.size() < kMany; ++id) {
        if (!HasStatic(level, id))
            AddStaticMesh(level, id, id % 2 == 0 ? plant : pillar);
    }
}

void AddScene(LevelContent& level, const RichTextures& textures)
{
    constexpr std::int32_t kFlameSequence = 180;
    constexpr std::int32_t kCoinSequence = 191;
    AddRooms(level, textures);
    level.FloorData = {0, 1, 0x8001, 1};
    level.SpriteTextures = {SpriteOf(Art::Flame1), SpriteOf(Art::Flame2), SpriteOf(Art::Coin)};
    level.SpriteSequences = {SequenceOf(kFlameSequence, 2, 0), SequenceOf(kCoinSequence, 1, 2)};
    level.Cameras.resize(2);
    level.FlybyCameras.resize(IsOlderGame(level.Game) ? 0 : 3);
    level.SoundSources.resize(1);
    level.NumBoxes = 3;
    level.Overlaps = {1, 0x8002, 0x8000};
    // One run of two textures that change places.
    level.AnimatedTextures = {1, 1, textures.Of(Art::Meadow), textures.Of(Art::Slabs)};
    level.NumItems = 5;
    level.AIObjects.resize(IsOlderGame(level.Game) ? 0 : 2);
    level.CinematicFrames.resize(IsOlderGame(level.Game) ? 4 : 0);
    level.DemoData.resize(10, std::byte{0x5a});
}

} // namespace morlik::samples
