#pragma once

#include "base/Registry.h"
#include "base/Reporter.h"

#include <string>

namespace morlik
{

/// Key of the settings that belong to this program alone.
inline constexpr const char* kProgramKey = R"(HKEY_LOCAL_MACHINE\software\Torvand)";
/// Key of the folders, shared with the sibling tool.
inline constexpr const char* kFoldersKey = R"(HKEY_LOCAL_MACHINE\software\Torvand\Sorbling)";

/// The settings, each under its own name in the registry. A folder that can't be read is "Err".
struct Settings
{
    std::string DestWADFolder;   ///< where the dialog for a WAS file starts
    std::string SourceWADFolder; ///< this and the next two are the sibling tool's
    std::string ObjectsFolder;
    std::string TextureFolder;
    std::string LevelFolder; ///< where the open dialogs start
    std::string Tomb5Folder; ///< the sibling tool's
    std::string TRObjIDFile; ///< read, but nothing uses it
};

/// Reads the settings. Where there are none yet, which `DestWADFolder` tells, the keys are created
/// and the default folders written first.
Settings LoadSettings(Registry& registry, Reporter& report);

/// Writes the six folders and the version that they are meant for.
void SaveSettings(const Settings& settings, Registry& registry, Reporter& report);

} // namespace morlik
