#pragma once

#include "gallery/LevelCards.h"

#include <string>

namespace morlik::gallery
{

/// The page of a level, "index.html" in its folder, which is two below the gallery's: a card for
/// each object, then the sounds. It needs no script to be read.
std::string LevelPage(const LevelCards& cards);

/// Its file "data.js", from which the script of the gallery makes the larger views:
///
///   morlikLevel = {objects: [...]}, each of them with
///   k anchor; i number; n name; e name in IV; m meshes; t textures; s slots of sounds
///   a numbers of frames of the animations; v pictures of some by their numbers
///   x a list for each tile: its picture and the boxes, each X, Y, width and height in pixels
///   p picture; r the one that turns; g model; z files of its set; f what is wrong with it
///   and sounds: {slot: files}
///
/// What is empty is left out.
std::string LevelScript(const LevelCards& cards);

} // namespace morlik::gallery
