#include "convert/Horizon.h"

#include "base/Narrow.h"

#include <algorithm>

namespace morlik
{

namespace
{

/// Squares of the palette tile behind the 256 colours.
constexpr std::int32_t kBlackSquare = 256;
constexpr std::int32_t kMagentaSquare = 257;

template <class Test>
bool AnyY(const RawMesh& mesh, const RawFace& face, std::size_t corners, Test test)
{
    return std::any_of(face.Vertices.begin(),
                       face.Vertices.begin() + static_cast<std::ptrdiff_t>(corners),
                       [&](std::int16_t vertex) {
                           const auto index = narrow<std::size_t>(vertex);
                           if (index >= mesh.Vertices.size())
                               throw ReadFailure("mesh: a vertex " + std::to_string(index) +
                                                 " of " + std::to_string(mesh.Vertices.size()));
                           return test(mesh.Vertices[index].Y);
                       });
}

bool AnyAbove(const RawMesh& mesh, const RawFace& face, std::size_t corners)
{
    return AnyY(mesh, face, corners, [](std::int16_t y) { return y < 0; });
}

} // namespace

HorizonUpdate::HorizonUpdate(const LevelData& level, std::int32_t colourBase, bool updateHorizon,
                             std::vector<std::string>& info)
    : level_(level),
      black_(Word(colourBase + kBlackSquare)),
      magenta_(Word(colourBase + kMagentaSquare)),
      updateHorizon_(updateHorizon),
      info_(info)
{
}

void HorizonUpdate::Rectangle(const RawMesh& mesh, const RawFace& raw, WadFace& face) const
{
    if (updateHorizon_ && AnyAbove(mesh, raw, 4))
        face.Texture = magenta_;
}

void HorizonUpdate::Triangle(const RawMesh& mesh, const RawFace& raw, WadFace& face)
{
    // The part below the horizon line turns black in Tomb Raider III, ticked box or not.
    if (level_.Version == kTR3 && AnyY(mesh, raw, 3, [](std::int16_t y) { return y > 0; }))
        face.Texture = black_;
    if (!updateHorizon_ || face.Texture == black_)
        return;
    const Colour8& colour = level_.Palette16[static_cast<std::uint16_t>(raw.Texture) >> 8U];
    const bool bright = colour.R != 0 && colour.G != 0 && colour.B != 0;
    if (bright || AnyAbove(mesh, raw, 3))
        face.Texture = magenta_;
    if (!textWritten_)
        WriteCloudText(colour);
}

void HorizonUpdate::Finish()
{
    if (textWritten_)
        return;
    WriteHead();
    info_.emplace_back("The horizon is NOT updates for cloud support"); // known to users as it is
}

void HorizonUpdate::WriteHead()
{
    info_.emplace_back("Horizon information");
    info_.emplace_back("-------------------");
    info_.emplace_back("This WAS has a horizon included.");
}

void HorizonUpdate::WriteCloudText(const Colour8& colour)
{
    textWritten_ = true;
    WriteHead();
    info_.emplace_back("The horizon has support for clouds");
    info_.emplace_back(
        "To enable clouds with the color from the horizon, paste this in the script:");
    info_.push_back("Layer1=" + std::to_string(colour.R) + "," + std::to_string(colour.G) + "," +
                    std::to_string(colour.B));
}

} // namespace morlik
