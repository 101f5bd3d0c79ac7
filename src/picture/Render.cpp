#include "picture/Render.h"

#include "base/Narrow.h"
#include "model/Damage.h"
#include "picture/Raster.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace morlik
{

namespace
{

// Light from the camera on a face that looks aside, and what more falls on one that looks back.
constexpr double kAmbient = 0.45;
constexpr double kDirect = 1 - kAmbient;

constexpr double kNearest = 1;        ///< distance of what is cut off before the camera
constexpr double kFineSteps = 1024;   ///< in a unit, for places that the camera sees
constexpr double kEdgeBias = 0.002;   ///< how much nearer edges are than their faces
constexpr std::int32_t kEdgeHalf = 1; ///< half of the width of an edge, in samples

/// A corner as the camera sees it. All fields are even over a face in space.
struct ViewCorner
{
    double X = 0;
    double Y = 0;
    double Z = 0;
    double Light = 0;
    double U = 0;
    double V = 0;
};

constexpr std::array kViewFields{&ViewCorner::X,     &ViewCorner::Y, &ViewCorner::Z,
                                 &ViewCorner::Light, &ViewCorner::U, &ViewCorner::V};

/// A face on its way to the picture. Each of the five planes that may cut it adds a corner.
struct Polygon
{
    std::array<ViewCorner, 9> Corners;
    std::size_t Count = 0;

    void Add(const ViewCorner& corner) { Corners[Count++] = corner; }
};

/// A plane; what is in front of it has values above 0.
struct Plane
{
    double X, Y, Z, Shift;

    double At(const ViewCorner& corner) const
    {
        return X * corner.X + Y * corner.Y + Z * corner.Z + Shift;
    }
};

/// From what the camera sees to samples: `Scale` Place / Z + Middle.
struct Projection
{
    Projection(const Camera& camera, const RenderOptions& options)
        : Scale(options.Height * kSamples / (2 * kViewSlope) *
                std::clamp(camera.Zoom, kLeastZoom, kMostZoom)),
          MiddleX(options.Width * kSamples / 2.0 + Pan(camera.PanX, options)),
          MiddleY(options.Height * kSamples / 2.0 + Pan(camera.PanY, options))
    {
    }

    static double Pan(double pan, const RenderOptions& options)
    {
        return std::round(std::clamp(pan, -2.0, 2.0) * options.Height * kSamples);
    }

    double Scale, MiddleX, MiddleY;
};

double Rounded(double value)
{
    return std::floor(value * kFineSteps + 0.5) / kFineSteps;
}

std::vector<ViewCorner> ToView(const Scene& scene, const Camera& camera)
{
    const Transform view = ViewOf(camera);
    std::vector<ViewCorner> corners;
    corners.reserve(scene.Vertices.size());
    for (const SceneVertex& vertex : scene.Vertices) {
        const Point place = view.Apply(vertex.Position);
        double light = vertex.Light;
        if (vertex.Normal) {
            const auto& row = view.Turn[2];
            const Point& normal = *vertex.Normal;
            const double away = row[0] * normal.X + row[1] * normal.Y + row[2] * normal.Z;
            light = kAmbient + kDirect * std::max(0.0, -away);
        }
        corners.push_back({.X = Rounded(place.X),
                           .Y = Rounded(place.Y),
                           .Z = Rounded(place.Z),
                           .Light = std::floor(light * kFullLight + 0.5)});
    }
    return corners;
}

Polygon PolygonOf(const SceneFace& face, const std::vector<ViewCorner>& corners)
{
    Polygon polygon;
    for (std::size_t i = 0; i < face.NumCorners; ++i) {
        const SceneCorner& corner = face.Corners[i];
        ViewCorner made = corners[corner.Vertex];
        made.U = corner.U;
        made.V = corner.V;
        polygon.Add(made);
    }
    return polygon;
}

ViewCorner Between(const ViewCorner& from, const ViewCorner& to, double share)
{
    ViewCorner between;
    for (double ViewCorner::*const field : kViewFields)
        between.*field = from.*field + (to.*field - from.*field) * share;
    return between;
}

/// What of a polygon lies in front of a plane.
Polygon Cut(const Polygon& polygon, const Plane& plane)
{
    Polygon rest;
    for (std::size_t i = 0; i < polygon.Count; ++i) {
        const ViewCorner& corner = polygon.Corners[i];
        const ViewCorner& next = polygon.Corners[(i + 1) % polygon.Count];
        const double here = plane.At(corner);
        const double there = plane.At(next);
        if (here >= 0)
            rest.Add(corner);
        // From the same end for both faces at the edge, so that no gap opens between them.
        if (here >= 0 && there < 0)
            rest.Add(Between(next, corner, there / (there - here)));
        else if (here < 0 && there >= 0)
            rest.Add(Between(corner, next, here / (here - there)));
    }
    return rest;
}

/// Cuts off what lies before the nearest distance, and what is so far beside the picture that its
/// corners don't fit on the grid.
Polygon Clip(const Polygon& polygon, const Projection& projection)
{
    constexpr double kGuard = kMostGridSamples / 2.0;
    const double scale = projection.Scale;
    const std::array<Plane, 5> planes{{{0, 0, 1, -kNearest},
                                       {scale, 0, kGuard, 0},
                                       {-scale, 0, kGuard, 0},
                                       {0, scale, kGuard, 0},
                                       {0, -scale, kGuard, 0}}};
    Polygon rest = polygon;
    for (const Plane& plane : planes) {
        const auto isBehind = [&](const ViewCorner& corner) { return plane.At(corner) < 0; };
        if (std::any_of(rest.Corners.begin(),
                        rest.Corners.begin() + static_cast<std::ptrdiff_t>(rest.Count), isBehind))
            rest = Cut(rest, plane);
    }
    return rest;
}

std::int32_t ToGrid(double samples)
{
    return static_cast<std::int32_t>(std::floor(samples * kGridSteps + 0.5));
}

ScreenCorner Project(const ViewCorner& corner, const Projection& projection)
{
    const double nearness = 1 / corner.Z;
    return {.X = ToGrid(projection.Scale * corner.X * nearness + projection.MiddleX),
            .Y = ToGrid(projection.Scale * corner.Y * nearness + projection.MiddleY),
            .Nearness = nearness,
            .U = corner.U * nearness,
            .V = corner.V * nearness,
            .Light = corner.Light};
}

/// The triangles of a picture in the order in which they are drawn.
class Triangles
{
public:
    explicit Triangles(const RenderOptions& options)
        : width_(options.Width * kSamples), height_(options.Height * kSamples)
    {
    }

    /// Adds a triangle, unless its back is seen or no sample lies in it.
    void Add(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c,
             const Surface& surface)
    {
        const std::int64_t area =
            std::int64_t{b.X - a.X} * (c.Y - a.Y) - std::int64_t{b.Y - a.Y} * (c.X - a.X);
        const auto [left, right] = std::minmax({a.X, b.X, c.X});
        const auto [top, bottom] = std::minmax({a.Y, b.Y, c.Y});
        Triangle triangle{.Corners = {{{a.X, a.Y}, {b.X, b.Y}, {c.X, c.Y}}},
                          .Top = std::max(FirstSample(top), 0),
                          .Bottom = std::min(FirstSample(bottom + 1), height_),
                          .Surface = surface};
        const std::int32_t columns =
            std::min(FirstSample(right + 1), width_) - std::max(FirstSample(left), 0);
        if (area <= 0 || columns <= 0 || triangle.Top >= triangle.Bottom)
            return;
        const auto gradient = [&](double ScreenCorner::*field) {
            const double toB = b.*field - a.*field;
            const double toC = c.*field - a.*field;
            const auto whole = static_cast<double>(area);
            return Gradient{.Start = a.*field,
                            .PerX = (toB * (c.Y - a.Y) - toC * (b.Y - a.Y)) / whole,
                            .PerY = (toC * (b.X - a.X) - toB * (c.X - a.X)) / whole};
        };
        triangle.Nearness = gradient(&ScreenCorner::Nearness);
        triangle.U = gradient(&ScreenCorner::U);
        triangle.V = gradient(&ScreenCorner::V);
        triangle.Light = gradient(&ScreenCorner::Light);
        const bool blends = surface.Paint == Paint::AddNearest || surface.Paint == Paint::AddLinear;
        CountWork(triangle.Bottom - triangle.Top, columns, blends);
        list_.push_back(triangle);
    }

    const std::vector<Triangle>& List() const { return list_; }
    /// About the samples that have to be looked at.
    std::int64_t Work() const { return work_; }

private:
    /// The first sample whose middle is at a place of the grid or behind it.
    static std::int32_t FirstSample(std::int32_t place)
    {
        return (place + kGridSteps / 2 - 1) >> kGridShift;
    }

    /// Damaged objects may have faces without end on top of each other. To add them takes three
    /// times as long.
    void CountWork(std::int64_t rows, std::int64_t columns, bool blends)
    {
        constexpr std::int64_t kRowWork = 16; // to begin a row costs as much as some samples
        constexpr std::int64_t kAnyObject = 1 << 25;
        constexpr std::int64_t kLayers = 32;
        work_ += rows * (kRowWork + columns / 2) * (blends ? 3 : 1);
        if (work_ > kAnyObject + kLayers * width_ * height_)
            FailDamaged("too many faces on top of each other");
    }

    std::int32_t width_, height_; ///< in samples
    std::int64_t work_ = 0;
    std::vector<Triangle> list_;
};

void AddFan(Triangles& triangles, const std::vector<ScreenCorner>& corners, const Surface& surface)
{
    for (std::size_t i = 2; i < corners.size(); ++i)
        triangles.Add(corners[0], corners[i - 1], corners[i], surface);
}

/// Adds an edge as a narrow stripe.
void AddEdge(Triangles& triangles, ScreenCorner from, ScreenCorner to, const Surface& surface)
{
    for (ScreenCorner* const end : {&from, &to})
        end->Nearness *= 1 + kEdgeBias;
    const bool isFlat = std::abs(to.X - from.X) > std::abs(to.Y - from.Y);
    const auto moved = [&](ScreenCorner corner, std::int32_t way) {
        (isFlat ? corner.Y : corner.X) += way * kEdgeHalf * kGridSteps;
        return corner;
    };
    const bool isForward = isFlat ? to.X > from.X : to.Y < from.Y;
    const std::int32_t way = isForward ? 1 : -1;
    AddFan(triangles, {moved(from, -way), moved(to, -way), moved(to, way), moved(from, way)},
           surface);
}

/// Adds a face as it is painted: its surface, or what hides its background, and its edges.
void AddFace(Triangles& triangles, const Polygon& polygon, const Surface& surface,
             const Projection& projection, const RenderOptions& options)
{
    std::vector<ScreenCorner> corners;
    for (std::size_t i = 0; i < polygon.Count; ++i)
        corners.push_back(Project(polygon.Corners[i], projection));
    if (!options.Wireframe) {
        AddFan(triangles, corners, surface);
        return;
    }
    const std::size_t before = triangles.List().size();
    AddFan(triangles, corners, {.Plain = options.Background});
    if (triangles.List().size() == before)
        return; // its back is seen
    for (std::size_t i = 0; i < corners.size(); ++i)
        AddEdge(triangles, corners[i], corners[(i + 1) % corners.size()], {.Plain = options.Edges});
}

Paint PaintOf(const SceneFace& face, Filter filter)
{
    if (face.Blends)
        return filter == Filter::Linear ? Paint::AddLinear : Paint::AddNearest;
    return filter == Filter::Linear ? Paint::Linear : Paint::Nearest;
}

void NeedTiles(const Scene& scene, TexturePixels& textures)
{
    std::set<std::int32_t> tiles;
    for (const SceneFace& face : scene.Faces)
        tiles.insert(face.Texture.Tile);
    textures.Need({tiles.begin(), tiles.end()});
}

/// The faces in the order in which they are drawn: the blending ones last, the farthest first.
std::vector<const SceneFace*> InOrder(const Scene& scene, const std::vector<ViewCorner>& corners)
{
    std::vector<const SceneFace*> faces;
    faces.reserve(scene.Faces.size());
    for (const SceneFace& face : scene.Faces)
        faces.push_back(&face);
    const auto blending = std::stable_partition(
        faces.begin(), faces.end(), [](const SceneFace* face) { return !face->Blends; });
    const auto depth = [&](const SceneFace* face) {
        double sum = 0;
        for (std::size_t i = 0; i < face->NumCorners; ++i)
            sum += corners[face->Corners[i].Vertex].Z;
        return sum / face->NumCorners;
    };
    std::stable_sort(blending, faces.end(), [&](const SceneFace* one, const SceneFace* other) {
        return depth(one) > depth(other);
    });
    return faces;
}

Triangles SetUp(const Scene& scene, const Camera& camera, const RenderOptions& options,
                const TexturePixels& textures)
{
    const std::vector<ViewCorner> corners = ToView(scene, camera);
    const Projection projection(camera, options);
    Triangles triangles(options);
    for (const SceneFace* face : InOrder(scene, corners)) {
        const Polygon polygon = Clip(PolygonOf(*face, corners), projection);
        const Surface surface{.Paint = PaintOf(*face, options.Filter),
                              .Tile = textures.Tile(face->Texture.Tile),
                              .Box = face->Texture};
        AddFace(triangles, polygon, surface, projection, options);
    }
    return triangles;
}

} // namespace

Picture Render(const Scene& scene, const Camera& camera, const RenderOptions& options,
               TexturePixels& textures, std::int64_t* workLeft)
{
    NeedTiles(scene, textures);
    const Triangles triangles = SetUp(scene, camera, options, textures);
    if (workLeft != nullptr && (*workLeft -= triangles.Work()) < 0)
        FailDamaged("too many faces on top of each other for so many frames");
    Picture picture{.Width = options.Width, .Height = options.Height, .Pixels = {}};
    picture.Pixels.resize(picture.At(0, options.Height), options.Background);
    Band band(options.Width, options.Background);
    for (std::int32_t y = 0; y < options.Height; y += Band::kRows) {
        for (const Triangle& triangle : triangles.List())
            if (triangle.Top < (y + Band::kRows) * kSamples && triangle.Bottom > y * kSamples)
                band.Draw(triangle, y * kSamples);
        band.Resolve(picture, y, std::min(Band::kRows, options.Height - y));
    }
    return picture;
}

} // namespace morlik
