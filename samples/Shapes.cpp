#include "samples/Shapes.h"

#include "base/Narrow.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace morlik::samples
{

namespace
{

constexpr int kEdges = 8;

/// A point on an upright circle (Z) or a lying one (Y), `step` eighths of a turn from X.
std::int16_t Along(std::int16_t radius, int step, bool second)
{
    const double angle = step * 2 * std::numbers::pi / kEdges;
    return static_cast<std::int16_t>(
        std::lround(radius * (second ? std::sin(angle) : std::cos(angle))));
}

std::array<std::int16_t, kEdges> AddCircle(MeshContent& mesh, std::int16_t radius, std::int16_t y)
{
    std::array<std::int16_t, kEdges> circle{};
    for (int step = 0; step < kEdges; ++step) {
        circle.at(static_cast<std::size_t>(step)) =
            AddVertex(mesh, {Along(radius, step, false), y, Along(radius, step, true)});
    }
    return circle;
}

double Length(double x, double y, double z)
{
    return std::sqrt(x * x + y * y + z * z);
}

/// The middle between the least and the greatest of one coordinate.
std::int16_t Middle(const std::vector<Vector3>& vertices, std::int16_t Vector3::*axis)
{
    const auto [least, greatest] = std::minmax_element(
        vertices.begin(), vertices.end(),
        [axis](const Vector3& a, const Vector3& b) { return a.*axis < b.*axis; });
    return narrow<std::int16_t>(((*least).*axis + (*greatest).*axis) / 2);
}

/// Unit length of the normals, as the games have it.
constexpr double kUnit = 16384;

} // namespace

std::int16_t AddVertex(MeshContent& mesh, const Vector3& vertex)
{
    mesh.Vertices.push_back(vertex);
    return narrow<std::int16_t>(mesh.Vertices.size() - 1);
}

void AddBox(MeshContent& mesh, const Vector3& least, const Vector3& greatest, const BoxSkin& skin)
{
    // Bit 0 of a corner's number: right, bit 1: low, bit 2: far.
    std::array<std::int16_t, 8> v{};
    for (std::size_t i = 0; i < v.size(); ++i) {
        v.at(i) = AddVertex(mesh, {(i & 1U) != 0 ? greatest.X : least.X,
                                   (i & 2U) != 0 ? greatest.Y : least.Y,
                                   (i & 4U) != 0 ? greatest.Z : least.Z});
    }
    const std::array<MeshFace, 6> sides{{{{v[0], v[1], v[3], v[2]}, skin.Front},
                                         {{v[1], v[5], v[7], v[3]}, skin.Right},
                                         {{v[5], v[4], v[6], v[7]}, skin.Back},
                                         {{v[4], v[0], v[2], v[6]}, skin.Left},
                                         {{v[4], v[5], v[1], v[0]}, skin.Top},
                                         {{v[7], v[6], v[2], v[3]}, skin.Bottom}}};
    mesh.Rectangles.insert(mesh.Rectangles.end(), sides.begin(), sides.end());
}

void AddRing(MeshContent& mesh, std::int16_t radius, std::int16_t top, std::int16_t bottom,
             std::int16_t texture)
{
    const auto upper = AddCircle(mesh, radius, top);
    const auto lower = AddCircle(mesh, radius, bottom);
    for (std::size_t a = 0; a < upper.size(); ++a) {
        // Seen from outside, the next edge is to the right.
        const std::size_t b = (a + 1) % upper.size();
        mesh.Rectangles.push_back({{upper.at(a), upper.at(b), lower.at(b), lower.at(a)}, texture});
    }
}

void AddLid(MeshContent& mesh, std::int16_t radius, std::int16_t y, bool top, std::int16_t texture)
{
    const std::int16_t centre = AddVertex(mesh, {0, y, 0});
    const auto rim = AddCircle(mesh, radius, y);
    for (std::size_t a = 0; a < rim.size(); ++a) {
        const std::size_t b = (a + 1) % rim.size();
        mesh.Triangles.push_back({{centre, rim.at(top ? b : a), rim.at(top ? a : b)}, texture});
    }
}

void AddBoard(MeshContent& mesh, const std::array<Vector3, 4>& corners, std::int16_t front,
              std::int16_t back)
{
    std::array<std::int16_t, 4> v{};
    std::transform(corners.begin(), corners.end(), v.begin(),
                   [&mesh](const Vector3& corner) { return AddVertex(mesh, corner); });
    mesh.Rectangles.push_back({v, front});
    mesh.Rectangles.push_back({{v[1], v[0], v[3], v[2]}, back});
}

void AddRoof(MeshContent& mesh, const Vector3& least, const Vector3& greatest, std::int16_t texture)
{
    const std::int16_t top =
        AddVertex(mesh, {narrow<std::int16_t>((least.X + greatest.X) / 2), least.Y,
                         narrow<std::int16_t>((least.Z + greatest.Z) / 2)});
    const std::array<std::int16_t, 4> eaves{AddVertex(mesh, {least.X, greatest.Y, least.Z}),
                                            AddVertex(mesh, {greatest.X, greatest.Y, least.Z}),
                                            AddVertex(mesh, greatest),
                                            AddVertex(mesh, {least.X, greatest.Y, greatest.Z})};
    for (std::size_t side = 0; side < eaves.size(); ++side)
        mesh.Triangles.push_back({{top, eaves.at((side + 1) % 4), eaves.at(side)}, texture});
}

void AddSails(MeshContent& mesh, std::int16_t radius, const std::array<std::int16_t, 8>& textures)
{
    const std::int16_t hub = AddVertex(mesh, {0, 0, 0});
    for (int step = 0; step < kEdges; ++step) {
        const auto tip =
            AddVertex(mesh, {Along(radius, step, false), Along(radius, step, true), 0});
        const auto half = static_cast<std::int16_t>(radius / 2);
        const auto edge =
            AddVertex(mesh, {Along(half, step + 1, false), Along(half, step + 1, true), 0});
        const std::int16_t texture = textures.at(static_cast<std::size_t>(step));
        mesh.Triangles.push_back({{hub, tip, edge}, texture});
        mesh.Triangles.push_back({{hub, edge, tip}, texture});
    }
}

void PaintFaces(MeshContent& mesh, std::int16_t colourWord)
{
    const auto move = [colourWord](std::vector<MeshFace>& from, std::vector<MeshFace>& to) {
        for (MeshFace face : from) {
            face.Texture = colourWord;
            to.push_back(face);
        }
        from.clear();
    };
    move(mesh.Rectangles, mesh.ColouredRectangles);
    move(mesh.Triangles, mesh.ColouredTriangles);
}

void TurnInsideOut(MeshContent& mesh)
{
    for (auto* const list : {&mesh.Rectangles, &mesh.ColouredRectangles}) {
        for (MeshFace& face : *list) {
            std::swap(face.Vertices[0], face.Vertices[1]);
            std::swap(face.Vertices[2], face.Vertices[3]);
        }
    }
    for (auto* const list : {&mesh.Triangles, &mesh.ColouredTriangles}) {
        for (MeshFace& face : *list)
            std::swap(face.Vertices[1], face.Vertices[2]);
    }
}

void FinishMesh(MeshContent& mesh, Shading shading)
{
    mesh.Centre = {Middle(mesh.Vertices, &Vector3::X), Middle(mesh.Vertices, &Vector3::Y),
                   Middle(mesh.Vertices, &Vector3::Z)};
    double radius = 1;
    for (const Vector3& vertex : mesh.Vertices) {
        const double x = vertex.X - mesh.Centre.X;
        const double y = vertex.Y - mesh.Centre.Y;
        const double z = vertex.Z - mesh.Centre.Z;
        const double length = std::max(1.0, Length(x, y, z));
        radius = std::max(radius, length);
        if (shading == Shading::Normals) {
            const auto part = [length](double value) {
                return static_cast<std::int16_t>(value * kUnit / length);
            };
            mesh.Normals.push_back({part(x), part(y), part(z)});
        } else // brighter toward the top
            mesh.Lights.push_back(narrow<std::int16_t>(0x1000 + std::lround(0x800 * y / length)));
    }
    mesh.Radius = narrow<std::int32_t>(std::lround(std::ceil(radius)));
}

} // namespace morlik::samples
