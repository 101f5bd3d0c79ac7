#pragma once

#include "base/Reporter.h"
#include "level/ObjectNames.h"
#include "set/ObjectSet.h"

namespace morlik
{

/// Brings the animation frames of a Tomb Raider I, II or III level, which stand in `set` as they
/// were read, to the editor's form; those of IV and V have it already.
///
/// A frame is a run of 16-bit words: nine header words (box and offset of the object), then a
/// rotation for each mesh of the object. A rotation with any of its top two bits set (mask 0xc000)
/// is one word, an angle about one axis; else it is two words with angles about all three.
/// As read, frames of Tomb Raider I have a count before the rotations and the two words of each
/// exchanged; one-word angles of I to III have 10 bits. In the editor's form they have 12.
///
/// Only `Frames` and, for Tomb Raider I, `FrameSize` change. Faults are told and never stop it.
void ConvertFrames(ObjectSet& set, const ObjectNames& names, Reporter& report);

} // namespace morlik
