// What the renderer draws, pixel by pixel. All cameras see a plane through their target, square on,
// with a pixel for each world unit.

#include "picture/Render.h"

#include "tests/model/MadeSet.h"
#include "tests/support/HeapPeak.h"

#include <numeric>

namespace morlik::test
{

namespace
{

constexpr std::int32_t kSide = 16; ///< of the pictures
constexpr std::int32_t kBox = 8;   ///< of the textures, and of the faces in world units
constexpr std::int32_t kRim = (kSide - kBox) / 2;

constexpr Colour kBlack = Opaque(0, 0, 0);
constexpr Colour kDark = Opaque(40, 30, 20);
constexpr Colour kBright = Opaque(250, 2, 3);
constexpr Colour kMagenta = Opaque(255, 0, 255);

/// The colours of plain tiles, by their number; the last tile has another colour at each pixel.
constexpr std::array kPlainTiles{kBlack, kDark, kBright, kMagenta};
constexpr std::int16_t kMixedTile = kPlainTiles.size();

Colour MixedPixel(std::int32_t x, std::int32_t y)
{
    return Opaque(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), 100);
}

class TestRows : public TileRows
{
public:
    void CopyRow(std::int64_t row, std::byte* out) const override
    {
        const auto tile = static_cast<std::size_t>(row / kTileSide);
        for (std::int32_t x = 0; x < kTileSide; ++x) {
            const Colour colour = tile < kPlainTiles.size()
                                      ? kPlainTiles.at(tile)
                                      : MixedPixel(x, static_cast<std::int32_t>(row % kTileSide));
            for (unsigned shift = 0; shift < 24; shift += 8)
                *out++ = static_cast<std::byte>((colour >> shift) & 0xffU);
        }
    }
};

/// A corner of a square, right and below.
using Corner = std::array<int, 2>;
constexpr Corner kTL{0, 0};
constexpr Corner kTR{1, 0};
constexpr Corner kBR{1, 1};
constexpr Corner kBL{0, 1};

/// Texture `n` is a whole square on plain tile n; textures behind them lie on the mixed tile.
class RenderTest : public testing::Test
{
protected:
    RenderTest()
    {
        set_.Tiles =
            SetTiles(std::int64_t{kMixedTile + 1} * kTileBytes, std::make_shared<TestRows>());
        set_.Textures.clear();
        for (std::int16_t tile = 0; tile < kMixedTile; ++tile)
            AddTexture(tile, 0, 0);
        camera_.Distance = kSide / (2 * kViewSlope);
    }

    std::int16_t AddTexture(std::int16_t tile, std::uint8_t x, std::uint8_t y)
    {
        set_.Textures.push_back(
            {.X = x, .Y = y, .Tile = tile, .Width = kBox - 1, .Height = kBox - 1});
        return static_cast<std::int16_t>(set_.Textures.size() - 1);
    }

    /// Adds a face whose vertices are at these corners of the square in front of the camera, so
    /// much nearer to it.
    void AddFace(const std::vector<Corner>& corners, std::int32_t texture, std::int16_t nearer = 0,
                 std::int16_t flags = 0)
    {
        WadFace face{.Type = corners.size() == 3 ? kFaceTriangle : kFaceRectangle,
                     .Texture = Word(texture),
                     .Flags = flags};
        for (std::size_t i = 0; i < corners.size(); ++i) {
            face.Vertices[i] = static_cast<std::int16_t>(mesh_.Vertices.size());
            const auto [right, below] = corners[i];
            mesh_.Vertices.push_back({static_cast<std::int16_t>(kBox / 2 - right * kBox),
                                      static_cast<std::int16_t>(below * kBox - kBox / 2), nearer});
        }
        mesh_.Faces.push_back(face);
    }

    Picture Draw()
    {
        set_.Meshes = {};
        AddMeshes(set_, {mesh_});
        set_.StaticMeshes = {StaticMesh{}};
        TexturePixels textures(set_.Tiles);
        return Render(SceneOfStaticMesh(set_, 0), camera_, options_, textures);
    }

    Colour DrawMiddle()
    {
        const Picture picture = Draw();
        return picture.Pixels[picture.At(kSide / 2, kSide / 2)];
    }

    ObjectSet set_ = MadeSet();
    WadMesh mesh_;
    Camera camera_;
    RenderOptions options_{.Width = kSide, .Height = kSide};
};

const std::vector<Corner> kSquare{kTL, kTR, kBR, kBL};

/// Pixels of the square are those of the box on the mixed tile, at the place that `from` leads a
/// place of the square to. Those that a face covers in part are as opaque as that. Gives how many
/// pixels there are, in quarters.
template <class From>
int ExpectBox(const Picture& picture, int boxX, int boxY, From from)
{
    int quarters = 0;
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x) {
            const Colour pixel = picture.Pixels[picture.At(x, y)];
            const int alpha = static_cast<int>(pixel >> 24U);
            quarters += (alpha + 1) / 64;
            if (pixel == 0)
                continue;
            const Corner place = from(x - kRim, y - kRim);
            EXPECT_EQ(pixel | kOpaque, MixedPixel(boxX + place[0], boxY + place[1]))
                << x << ' ' << y;
        }
    return quarters;
}

constexpr int kAll = 4 * kBox * kBox;

TEST_F(RenderTest, ShowsEachPixelOfRectanglesTurnedAndMirrored)
{
    constexpr int kLast = kBox - 1;
    const auto turned = [](std::size_t turn, int x, int y) {
        return std::array<Corner, 4>{
            {{x, y}, {y, kLast - x}, {kLast - x, kLast - y}, {kLast - y, x}}}
            .at(turn);
    };
    const std::int16_t texture = AddTexture(kMixedTile, 24, 56);
    for (const int sign : {1, -1})
        for (std::size_t turn = 0; turn < 4; ++turn)
            for (const Filter filter : {Filter::Nearest, Filter::Linear}) {
                SCOPED_TRACE(testing::Message() << sign << " turned " << turn);
                mesh_ = {};
                std::vector<Corner> corners = kSquare;
                std::rotate(corners.begin(), corners.begin() + static_cast<std::ptrdiff_t>(turn),
                            corners.end());
                AddFace(corners, sign * texture);
                options_.Filter = filter;
                const auto from = [&](int x, int y) {
                    const auto [u, v] = turned(turn, x, y);
                    return Corner{sign > 0 ? u : kLast - u, v};
                };
                const Picture picture = Draw();
                if (filter == Filter::Nearest)
                    EXPECT_EQ(ExpectBox(picture, 24, 56, from), kAll);
                else // the samples blend, but their mean is the pixel, save at the border
                    EXPECT_EQ(picture.Pixels[picture.At(kRim + 3, kRim + 2)],
                              MixedPixel(24 + from(3, 2)[0], 56 + from(3, 2)[1]));
            }
}

/// By its code, the corners of the box at which a triangle has its vertices. Where they go around
/// it against the clock, the triangle shows its mirror image.
TEST_F(RenderTest, ShowsEachPixelOfTriangles)
{
    const std::vector<std::pair<std::int32_t, std::vector<Corner>>> codes{
        {0x0000, {kTL, kTR, kBL}}, {0x2000, {kTR, kBR, kTL}}, {0x4000, {kBR, kBL, kTR}},
        {0x6000, {kBL, kTL, kBR}}, {0x8000, {kTR, kTL, kBR}}, {0xa000, {kTL, kBL, kTR}},
        {0xc000, {kBL, kBR, kTL}}, {0xe000, {kBR, kTR, kBL}}};
    const std::int16_t texture = AddTexture(kMixedTile, 24, 56);
    for (const auto& [bits, corners] : codes) {
        SCOPED_TRACE(testing::Message() << std::hex << bits);
        const bool isMirrored = bits >= 0x8000;
        std::vector<Corner> shown = corners;
        for (Corner& corner : shown)
            corner[0] = isMirrored ? 1 - corner[0] : corner[0];
        mesh_ = {};
        AddFace(shown, bits | texture);
        const int quarters = ExpectBox(Draw(), 24, 56, [&](int x, int y) {
            return Corner{isMirrored ? kBox - 1 - x : x, y};
        });
        EXPECT_NEAR(quarters, kAll / 2, kBox); // those on the long side belong to one half alone
    }
}

/// Two triangles that share their long side leave no gap there and meet no sample twice: where they
/// add, every pixel is as bright as the others.
TEST_F(RenderTest, DrawsSharedEdgesOnce)
{
    options_.Background = kBlack;
    AddFace({kTL, kTR, kBL}, 1, 0, 1);
    AddFace({kBR, kBL, kTR}, 1, 0, 1);
    const Picture picture = Draw();
    for (int y = 0; y < kBox; ++y)
        for (int x = 0; x < kBox; ++x)
            EXPECT_EQ(picture.Pixels[picture.At(kRim + x, kRim + y)], kDark) << x << ' ' << y;
}

TEST_F(RenderTest, ShowsACubeFromSixSides)
{
    struct Side
    {
        double Yaw, Pitch;
        std::array<int, 3> Away, Right, Below; ///< directions in the picture
    };
    const std::array<Side, 6> sides{{{0, 0, {0, 0, -1}, {-1, 0, 0}, {0, 1, 0}},
                                     {90, 0, {-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
                                     {180, 0, {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
                                     {270, 0, {1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
                                     {0, 90, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}},
                                     {0, -90, {0, -1, 0}, {-1, 0, 0}, {0, 0, -1}}}};
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const Side& side = sides.at(i);
        AddFace(kSquare, AddTexture(kMixedTile, static_cast<std::uint8_t>(i * 20), 40));
        for (std::size_t corner = 0; corner < 4; ++corner) {
            const auto [right, below] = kSquare[corner];
            const auto at = [&, right = right, below = below](std::size_t axis) {
                return Word((-side.Away.at(axis) + (2 * right - 1) * side.Right.at(axis) +
                             (2 * below - 1) * side.Below.at(axis)) *
                            kBox / 2);
            };
            mesh_.Vertices[i * 4 + corner] = {at(0), at(1), at(2)};
        }
    }
    camera_.Distance += kBox / 2.0;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        SCOPED_TRACE(i);
        camera_.Yaw = sides.at(i).Yaw;
        camera_.Pitch = sides.at(i).Pitch;
        const auto same = [](int x, int y) { return Corner{x, y}; };
        EXPECT_EQ(ExpectBox(Draw(), static_cast<int>(i) * 20, 40, same), kAll);
    }
}

TEST_F(RenderTest, HidesAddsAndLeavesOut)
{
    constexpr Colour kSum = Opaque(255, 32, 23);
    constexpr Colour kFaint = Opaque(255, 191, 128) - kOpaque + (40U << 24U);
    using Faces = std::vector<std::array<std::int16_t, 3>>; // texture, how much nearer, flags
    const std::vector<std::tuple<const char*, Colour, Faces, Colour>> cases{
        {"nothing", 0, {}, 0},
        {"nearer last", 0, {{1, 0, 0}, {2, 3, 0}}, kBright},
        {"nearer first", 0, {{2, 3, 0}, {1, 0, 0}}, kBright},
        {"magenta lets through", 0, {{3, 3, 0}, {1, 0, 0}}, kDark},
        {"light adds and stays within range", kBlack, {{2, 3, 1}, {1, 0, 0}}, kSum},
        {"light hides no light behind it", kBlack, {{2, 3, 1}, {1, 0, 1}}, kSum},
        {"light behind a face is hidden", kBlack, {{2, 0, 1}, {1, 3, 0}}, kDark},
        {"light alone is as opaque as it is bright", 0, {{1, 0, 1}}, kFaint},
    };
    for (const auto& [name, background, faces, middle] : cases) {
        SCOPED_TRACE(name);
        mesh_ = {};
        for (const auto& [texture, nearer, flags] : faces)
            AddFace(kSquare, texture, nearer, flags);
        options_.Background = background;
        EXPECT_EQ(DrawMiddle(), middle);
    }
}

TEST_F(RenderTest, ShowsFacesFromOutsideUnderTheirLight)
{
    AddFace({kTL, kBL, kBR, kTR}, 2);
    EXPECT_EQ(DrawMiddle(), 0U) << "the back of a face";

    const auto redUnder = [this](const Vertex& normal, std::int16_t light) {
        mesh_ = {};
        AddFace(kSquare, 2);
        if (normal == Vertex{}) {
            mesh_.NumNormals = -4;
            mesh_.Lights.resize(4, light);
        } else {
            mesh_.NumNormals = 4;
            mesh_.Normals.resize(4, normal);
        }
        return DrawMiddle() & 0xffU;
    };
    EXPECT_EQ(redUnder({0, 0, 16300}, 0), 250U); // it looks at the camera
    EXPECT_EQ(redUnder({0, 16300, 0}, 0), 112U); // it looks aside: 0.45 of the light
    EXPECT_EQ(redUnder({}, 0), 250U);
    EXPECT_EQ(redUnder({}, 4096), 250U);
    EXPECT_EQ(redUnder({}, 6144), 125U);
}

/// Beside the boxes stand other colours; neither filter brings them in, at any scale.
TEST_F(RenderTest, FiltersInsideOfTheBox)
{
    AddFace(kSquare, AddTexture(kMixedTile, 24, 56));
    for (const Filter filter : {Filter::Nearest, Filter::Linear})
        for (const double yaw : {0.0, 37.0})
            for (const double zoom : {0.3, 1.0, 1.7, 20.0}) {
                options_.Filter = filter;
                camera_.Yaw = yaw;
                camera_.Zoom = zoom;
                for (const Colour pixel : Draw().Pixels) {
                    if (pixel == 0)
                        continue;
                    const Colour red = pixel & 0xffU;
                    const Colour green = (pixel >> 8U) & 0xffU;
                    EXPECT_TRUE(red >= 24 && red < 24 + kBox && green >= 56 && green < 56 + kBox)
                        << red << ' ' << green;
                }
            }
}

TEST_F(RenderTest, CutsFacesBeforeTheCamera)
{
    // A floor around the camera: it covers what lies below the horizon, and nothing above it.
    AddFace(kSquare, 2);
    mesh_.Vertices = {{500, 8, -500}, {-500, 8, -500}, {-500, 8, 500}, {500, 8, 500}};
    camera_.Distance = 0;
    for (const double zoom : {0.1, 1.0, 10.0}) {
        camera_.Zoom = zoom;
        const Picture picture = Draw();
        for (const int x : {0, kSide - 1}) {
            EXPECT_EQ(picture.Pixels[picture.At(x, kSide - 1)], kBright) << zoom;
            EXPECT_EQ(picture.Pixels[picture.At(x, 0)], 0U) << zoom;
        }
    }
}

TEST_F(RenderTest, WireframeHasEdgesAndHidesWhatLiesBehind)
{
    options_.Wireframe = true;
    options_.Background = kDark;
    AddFace({kTL, kTR, kBL}, 2);
    AddFace(kSquare, 2, 1);
    const Picture picture = Draw();
    for (int at = kRim + 1; at < kSide - kRim - 1; ++at) {
        EXPECT_EQ(picture.Pixels[picture.At(at, at)], kDark); // nor the long side of the triangle
        EXPECT_NE(picture.Pixels[picture.At(at, kRim)], kDark);
        EXPECT_NE(picture.Pixels[picture.At(kRim, at)], kDark);
    }
}

TEST_F(RenderTest, MovesThePictureToTheRightAndDown)
{
    AddFace(kSquare, 2);
    camera_.PanX = 0.25; // of the height
    camera_.PanY = -0.125;
    const Picture picture = Draw();
    for (const auto& [x, y, colour] : {std::tuple{kRim + 4, kRim - 2, kBright},
                                       {kRim + kBox + 3, kRim + kBox - 3, kBright},
                                       {kRim + 3, kRim, Colour{0}},
                                       {kRim + 4, kRim + kBox - 2, Colour{0}}})
        EXPECT_EQ(picture.Pixels[picture.At(x, y)], colour) << x << ' ' << y;
}

TEST(TexturePixels, KeepsNoMoreTilesThanAPictureMayNeed)
{
    TexturePixels textures(SetTiles(std::int64_t{400} * kTileBytes, std::make_shared<TestRows>()));
    std::vector<std::int32_t> numbers(200);
    ResetHeapPeak();
    for (const std::int32_t first : {0, 200, 100}) {
        std::iota(numbers.begin(), numbers.end(), first);
        textures.Need(numbers);
        EXPECT_EQ(textures.Tile(first + 199)[0], MixedPixel(0, 0));
    }
    EXPECT_LT(HeapPeak(), TexturePixels::kMostTiles * (std::size_t{257} << 10U));
}

TEST_F(RenderTest, GivesUpOnFacesWithoutEnd)
{
    for (int face = 0; face < 2000; ++face)
        AddFace(kSquare, 2);
    options_.Width = options_.Height = 2000;
    camera_.Zoom = 100;
    ExpectFailure("too many faces", [this] { Draw(); });
}

} // namespace

} // namespace morlik::test
