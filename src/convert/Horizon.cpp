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

void WriteHead(Reporter& report)
{
    report.InfoLine("Horizon information");
    report.InfoLine("-------------------");
    report.InfoLine("This WAS has a horizon included.");
}

} // namespace

HorizonUpdate::HorizonUpdate(std::int32_t version, const TrMainState& state,
                             std::int32_t colourBase, Reporter& report)
    : version_(version),
      state_(state),
      black_(Word(colourBase + kBlackSquare)),
      magenta_(Word(colourBase + kMagentaSquare)),
      skyFix_(report.TheHost().SkyFix()),
      report_(report)
{
}

void HorizonUpdate::Rectangle(const RawMesh& mesh, const RawFace& raw, WadFace& face) const
{
    if (skyFix_ && AnyAbove(mesh, raw, 4))
        face.Texture = magenta_;
}

void HorizonUpdate::Triangle(const RawMesh& mesh, const RawFace& raw, WadFace& face)
{
    // The part below the horizon line turns black in Tomb Raider III, ticked box or not.
    if (version_ == kTR3 && AnyY(mesh, raw, 3, [](std::int16_t y) { return y > 0; }))
        face.Texture = black_;
    if (!skyFix_ || face.Texture == black_)
        return;
    const Colour8& colour = state_.Palette16[static_cast<std::uint16_t>(raw.Texture) >> 8U];
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
    WriteHead(report_);
    report_.InfoLine("The horizon is NOT updates for cloud support");
}

void HorizonUpdate::WriteCloudText(const Colour8& colour)
{
    textWritten_ = true;
    WriteHead(report_);
    report_.InfoLine("The horizon has support for clouds");
    report_.InfoLine("To enable clouds with the color from the horizon, paste this in the script:");
    report_.InfoLine("Layer1=" + std::to_string(colour.R) + "," + std::to_string(colour.G) + "," +
                     std::to_string(colour.B));
}

} // namespace morlik
