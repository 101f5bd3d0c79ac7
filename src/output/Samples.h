#pragma once

#include "base/Reporter.h"
#include "level/LevelData.h"
#include "output/OutputNames.h"
#include "side/MainSFX_Mod.h"

namespace morlik
{

/// Filter of the dialog for `main.sfx`, and the one for everything that can be opened.
inline constexpr const char* kMainSFXFilter = "TR2&3 Sound Data (main.sfx)|main.sfx";
inline constexpr const char* kOpenFilter =
    "TR Levels|*.phd;*.tub;*.tr2;*.tr4;*.trc|PRJ Files|*.prj|TR2&3 Sound Data (main.sfx)|main.sfx";

/// Writes the SAM file: for Tomb Raider I to III a line for each sample of each sound, the name of
/// its WAV file:
///
///   TR<version> Sound <sound number>-<sample of the sound, from 0>.wav
///
/// and the WAV files themselves into the sound folder. Those of II and III come from `main.sfx`,
/// which `dialog` asks for; after a cancel there are none. For IV and V the file is a copy of the
/// default one. Gives false if that is missing, or the chosen file can't be opened.
bool WriteSAM(const OutputNames& names, const LevelData& level, MainSFXState& mainSFX,
              FileDialog& dialog, Reporter& report);

/// Writes the SFX file: for Tomb Raider I to III the level's sound tables,
///
///   370 words, the sound map; sound details: count, records of 8 bytes;
///   sample indices: count, 32-bit words
///
/// with 32-bit counts, and for IV and V a copy of the default one. Gives false if that is missing.
bool WriteSFX(const OutputNames& names, const LevelData& level, Reporter& report);

} // namespace morlik
