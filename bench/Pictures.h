#pragma once

#include <string>
#include <vector>

namespace morlik::bench
{

/// Times pictures of the objects of levels on one core, without the conversion: the first moveable,
/// which is the player's figure of 15 meshes, large, and small pictures of all objects.
void MeasurePictures(const std::vector<std::string>& levels, int runs);

/// Times glTF files of all objects of levels on one core, without the conversion and the disk, and
/// tells the share of the PNG encoding.
void MeasureGltf(const std::vector<std::string>& levels, int runs);

} // namespace morlik::bench
