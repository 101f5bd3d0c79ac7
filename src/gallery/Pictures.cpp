#include "gallery/Pictures.h"

#include "base/Narrow.h"
#include "picture/Animation.h"
#include "picture/ContactSheet.h"
#include "picture/MovingFile.h"
#include "picture/PNG.h"
#include "picture/Render.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <set>
#include <tuple>

namespace morlik::gallery
{

namespace
{

/// Grows when pictures come out otherwise than before, so that none of the old ones is taken.
constexpr std::uint32_t kPicturesForm = 2;

constexpr std::size_t kTurnPictures = 30;
constexpr std::int32_t kTurnRate = 10;           ///< pictures a second
constexpr std::size_t kMostMovingPictures = 600; ///< of an animation: 20 seconds

std::vector<std::int32_t> TilesOf(const Scene& scene)
{
    std::set<std::int32_t> tiles;
    for (const SceneFace& face : scene.Faces)
        tiles.insert(face.Texture.Tile);
    return {tiles.begin(), tiles.end()};
}

/// A name of the pixels of a box of a tile that is needed already.
std::string NameOf(const TextInfo& box, const TexturePixels& textures)
{
    ContentKey key;
    const Colour* const tile = textures.Tile(box.Tile);
    for (int row = box.Y; row <= box.Y + box.Height; ++row)
        key.Add(std::as_bytes(
            std::span(tile + std::ptrdiff_t{row} * kTileSide + box.X, std::size_t{box.Width} + 1)));
    return key.Name();
}

/// Adds the faces with the pixels of their textures, wherever these lie on their tiles.
void AddFaces(ContentKey& key, const Scene& scene, TexturePixels& textures)
{
    textures.Need(TilesOf(scene));
    using Box = std::tuple<std::int16_t, std::uint8_t, std::uint8_t, std::uint8_t, std::uint8_t>;
    std::map<Box, std::uint32_t> numbers; // of the boxes, in the order in which they come
    for (const SceneFace& face : scene.Faces) {
        const TextInfo& box = face.Texture;
        const auto [number, isNew] =
            numbers.try_emplace({box.Tile, box.X, box.Y, box.Width, box.Height},
                                static_cast<std::uint32_t>(numbers.size()));
        key.Add(number->second);
        key.Add(face.Blends);
        key.Add(face.NumCorners);
        for (const SceneCorner& corner : face.Corners) {
            key.Add(corner.Vertex);
            key.Add(corner.U - box.X);
            key.Add(corner.V - box.Y);
        }
        if (isNew)
            key.Add(NameOf(box, textures));
    }
}

/// Adds a place or a direction, rounded as pictures round it: the sines of the systems differ.
void AddPoint(ContentKey& key, const Point& point)
{
    constexpr double kSteps = 1024;
    for (const double value : {point.X, point.Y, point.Z})
        key.Add(std::floor(value * kSteps + 0.5));
}

/// Adds a name of the vertices: those of all frames of an animation together may be many.
void AddVertices(ContentKey& key, const Scene& scene)
{
    ContentKey vertices;
    for (const SceneVertex& vertex : scene.Vertices) {
        AddPoint(vertices, vertex.Position);
        AddPoint(vertices, vertex.Normal.value_or(Point{}));
        vertices.Add(vertex.Normal.has_value());
        vertices.Add(vertex.Light);
    }
    key.Add(vertices.Name());
}

ContentKey KeyOf(const Scene& scene, TexturePixels& textures)
{
    ContentKey key;
    key.Add(kPicturesForm);
    AddFaces(key, scene, textures);
    AddVertices(key, scene);
    return key;
}

Picture Draw(const Scene& scene, std::int32_t side, TexturePixels& textures)
{
    Camera camera = ObliqueCamera();
    FrameTo(camera, scene, 1);
    return Render(scene, camera, {.Width = side, .Height = side}, textures);
}

/// The scene turned about the upright axis through the middle of its bounds.
Scene Turned(const Scene& scene, const Point& middle, double angle)
{
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    const auto turn = [&](Point& point, const Point& about) {
        const double x = point.X - about.X;
        const double z = point.Z - about.Z;
        point.X = about.X + x * cosine + z * sine;
        point.Z = about.Z - x * sine + z * cosine;
    };
    Scene turned = scene;
    for (SceneVertex& vertex : turned.Vertices) {
        turn(vertex.Position, middle);
        if (vertex.Normal)
            turn(*vertex.Normal, Point{});
    }
    return turned;
}

Point MiddleOf(const Scene& scene)
{
    Point least = scene.Vertices[0].Position;
    Point greatest = least;
    for (const SceneVertex& vertex : scene.Vertices) {
        least.X = std::min(least.X, vertex.Position.X);
        least.Z = std::min(least.Z, vertex.Position.Z);
        greatest.X = std::max(greatest.X, vertex.Position.X);
        greatest.Z = std::max(greatest.Z, vertex.Position.Z);
    }
    return {.X = (least.X + greatest.X) / 2, .Y = 0, .Z = (least.Z + greatest.Z) / 2};
}

/// All the scene's ways of a full turn, seen by one camera that holds them all.
void DrawTurn(const Scene& scene, TexturePixels& textures, MovingFile& file)
{
    const Point middle = MiddleOf(scene);
    const auto at = [&](std::size_t number) {
        return Turned(scene, middle,
                      2 * std::numbers::pi * static_cast<double>(number) / kTurnPictures);
    };
    Camera camera = ObliqueCamera();
    Framing framing(camera, 1);
    for (std::size_t i = 0; i < kTurnPictures; ++i)
        framing.Add(at(i));
    framing.FrameIn(camera);
    std::int64_t samplesLeft = kMostAnimationSamples;
    for (std::size_t i = 0; i < kTurnPictures; ++i)
        file.Add(Render(at(i), camera, {.Width = kMovingSide, .Height = kMovingSide}, textures,
                        &samplesLeft));
}

} // namespace

bool MovingBudget::Take(std::size_t pictures)
{
    if (pictures > PicturesLeft)
        return false;
    PicturesLeft -= pictures;
    return true;
}

std::string Pictures::Still(const Scene& scene, TexturePixels& textures)
{
    if (scene.Faces.empty())
        return {};
    std::string name = store_.Use(kPictures, KeyOf(scene, textures).Name(), ".png");
    store_.Make(
        name, [&](const std::string& path) { WritePNG(path, Draw(scene, kStillSide, textures)); });
    return name;
}

std::string Pictures::Turning(const Scene& scene, TexturePixels& textures)
{
    if (scene.Faces.empty() || !HasWebP() || !budget_.Take(kTurnPictures))
        return {};
    std::string name = store_.Use(kPictures, KeyOf(scene, textures).Name(), ".webp");
    store_.Make(name, [&](const std::string& path) {
        const auto file =
            NewAnimatedWebP(path, kTurnPictures, {.Rate = kTurnRate, .IsLossy = true});
        DrawTurn(scene, textures, *file);
        file->TakePlace();
    });
    return name;
}

std::string Pictures::Moving(const ObjectSet& set, std::size_t moveable, std::size_t animation,
                             TexturePixels& textures)
{
    if (!HasWebP())
        return {};
    const AnimatedScene animated(set, moveable, animation);
    const std::size_t count = animated.NumFrames();
    if (count < 2 || count > kMostMovingPictures || !budget_.Take(count))
        return {};
    const Scene first = animated.Frame(0);
    if (first.Faces.empty())
        return {};
    ContentKey key = KeyOf(first, textures);
    for (std::size_t frame = 1; frame < count; ++frame)
        AddVertices(key, animated.Frame(frame));
    std::string name = store_.Use(kPictures, key.Name(), ".webp");
    store_.Make(name, [&](const std::string& path) {
        const auto file = NewAnimatedWebP(path, count, {.IsLossy = true});
        DrawAnimation(animated, ObliqueCamera(), {.Width = kMovingSide, .Height = kMovingSide},
                      textures, [&](const Picture& picture) { file->Add(picture); });
        file->TakePlace();
    });
    return name;
}

std::string Pictures::Sprites(const SpriteTables& sprites, const SpriteSequence& sequence,
                              TexturePixels& textures)
{
    return store_.Keep(kPictures,
                       EncodePNG(DrawSprites(sprites, sequence, kStillSide, 0, textures)), ".png");
}

std::string Pictures::Tile(std::int32_t number, const TexturePixels& textures)
{
    const std::span pixels(textures.Tile(number), std::size_t{kTilePixels});
    std::string name = store_.Use(kPictures, ContentName(std::as_bytes(pixels)), ".png");
    store_.Make(name, [&](const std::string& path) {
        WritePNG(
            path,
            {.Width = kTileSide, .Height = kTileSide, .Pixels = {pixels.begin(), pixels.end()}});
    });
    return name;
}

Picture Pictures::ForStrip(const Scene& scene, TexturePixels& textures)
{
    return Draw(scene, kStripSide, textures);
}

std::string Pictures::Strip(const std::vector<Picture>& objects)
{
    if (objects.empty())
        return {};
    Picture strip{.Width = kStripSide * narrow<std::int32_t>(kStripObjects),
                  .Height = kStripSide,
                  .Pixels = {}};
    strip.Pixels.resize(strip.At(0, strip.Height));
    for (std::size_t i = 0; i < objects.size(); ++i)
        for (std::int32_t y = 0; y < kStripSide; ++y)
            std::copy_n(
                objects[i].Pixels.begin() + static_cast<std::ptrdiff_t>(objects[i].At(0, y)),
                kStripSide,
                strip.Pixels.begin() +
                    static_cast<std::ptrdiff_t>(strip.At(narrow<std::int32_t>(i) * kStripSide, y)));
    return store_.Keep(kPictures, EncodePNG(strip), ".png");
}

} // namespace morlik::gallery
