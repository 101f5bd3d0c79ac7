#pragma once

#include "convert/RawMesh.h"
#include "level/LevelData.h"
#include "set/WadMesh.h"

#include <string>
#include <vector>

namespace morlik
{

/// The horizon of Tomb Raider II and III is a mesh of plain colours that would hide the clouds of
/// the editor's game. While it is converted, its coloured faces are repainted with the transparent
/// square, and the Info file gets the script line that gives the clouds its colour.
class HorizonUpdate
{
public:
    /// For one mesh. `colourBase` is the texture number of the first colour square; without
    /// `updateHorizon` hardly anything is repainted. What was done goes to `info`, line by line.
    HorizonUpdate(const LevelData& level, std::int32_t colourBase, bool updateHorizon,
                  std::vector<std::string>& info);

    /// Repaints a coloured face just built from `raw`. A vertex index outside `mesh` is a
    /// `ReadFailure`.
    void Rectangle(const RawMesh& mesh, const RawFace& raw, WadFace& face) const;
    void Triangle(const RawMesh& mesh, const RawFace& raw, WadFace& face);

    /// At the end of the mesh: the text for a horizon that hides the clouds, if none was written.
    void Finish();

private:
    void WriteHead();
    void WriteCloudText(const Colour8& colour);

    const LevelData& level_;
    std::int16_t black_;
    std::int16_t magenta_;
    bool updateHorizon_;
    bool textWritten_ = false;
    std::vector<std::string>& info_;
};

} // namespace morlik
