#pragma once

#include "base/Reporter.h"
#include "convert/ChooseObjects.h"
#include "level/LevelData.h"
#include "level/ObjectNames.h"
#include "set/ObjectSet.h"

#include <functional>
#include <optional>
#include <string>

namespace morlik
{

/// What the user chose for a conversion.
struct ConvertChoices
{
    bool UpdateHorizon = false;            ///< clouds behind a Tomb Raider II or III horizon
    bool ExportSprites = false;            ///< the level's own sprites, Tomb Raider I to III
    std::optional<ObjectChoice> Objects{}; ///< some of the objects; else all
};

/// Stages of a conversion, each told as it begins, for the status of a save. All games go through
/// all of them.
enum class ConvertStage : std::uint8_t
{
    Meshes,
    Tiles,
    Palette,
    Frames,
    Dispatches,
    Textures,
    Objects,
};

/// The sound tables of a level. Slots that a game leaves unread hold 0 and count too.
SoundTables SoundTablesOf(const LevelData& level);

/// Brings a level into the editor's form. The level stays as it was read; pixels and samples of the
/// set are views into what it was read from. Samples of `main.sfx` are not there yet.
/// `levelTitle` is the file name of the level, for the list.
///
/// Faults that end the program, and those that stop a save alone, have got their message; for the
/// latter nothing comes back.
std::optional<ObjectSet> ConvertLevel(const LevelData& level, const ObjectNames& names,
                                      const std::string& levelTitle, const ConvertChoices& choices,
                                      Reporter& report,
                                      const std::function<void(ConvertStage)>& onStage = {});

} // namespace morlik
