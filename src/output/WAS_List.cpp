#include "output/WAS_List.h"

#include "base/Text.h"

namespace morlik
{

void WriteWAS(TextLines& file, const LevelData& level, const ObjectNames& names,
              const std::string& levelTitle)
{
    const auto version = std::to_string(level.Version);
    const auto source = ":Z:\\TOMB" + version + "\\" + ToUpper(levelTitle) + "\\";
    for (const Moveable& moveable : level.Moveables)
        file.Line(names.Moveable(kTR4, moveable.ObjectID) + source +
                  names.Moveable(level.Version, moveable.ObjectID));
    for (const StaticMesh& mesh : level.StaticMeshes)
        file.Line(names.Static(mesh.ObjectID) + source + names.Static(mesh.ObjectID));
}

} // namespace morlik
