#include "shell/Settings_Mod.h"

#include "base/Text.h"
#include "shell/Register_Mod.h"

#include <array>

namespace morlik
{

namespace
{

struct FolderSetting
{
    const char* Name;
    std::string Settings::*Folder;
    const char* Default;
};

/// In the order in which they are read and written.
constexpr std::array<FolderSetting, 6> kFolders{{
    {"DestWADFolder", &Settings::DestWADFolder, "C:\\"},
    {"SourceWADFolder", &Settings::SourceWADFolder, "C:\\"},
    {"ObjectsFolder", &Settings::ObjectsFolder, "C:\\"},
    {"TextureFolder", &Settings::TextureFolder, "C:\\"},
    {"LevelFolder", &Settings::LevelFolder, "C:\\"},
    {"Tomb5Folder", &Settings::Tomb5Folder, "D:\\"},
}};

bool IsFirstRun(Registry& registry, Reporter& report)
{
    const auto folder = RegReadValue(registry, kFoldersKey, kFolders.front().Name, report);
    return ToLower(folder) == ToLower(kRegError);
}

void WriteDefaults(Registry& registry, Reporter& report)
{
    RegCreateKey(registry, kProgramKey, report);
    RegCreateKey(registry, kFoldersKey, report);
    for (const FolderSetting& setting : kFolders)
        RegWriteText(registry, kFoldersKey, setting.Name, setting.Default, report);
}

} // namespace

Settings LoadSettings(Registry& registry, Reporter& report)
{
    if (IsFirstRun(registry, report))
        WriteDefaults(registry, report);
    Settings settings;
    for (const FolderSetting& setting : kFolders)
        settings.*setting.Folder = RegReadValue(registry, kFoldersKey, setting.Name, report);
    settings.TRObjIDFile = RegReadText(registry, kProgramKey, "TRObjIDFile", report);
    return settings;
}

void SaveSettings(const Settings& settings, Registry& registry, Reporter& report)
{
    for (const FolderSetting& setting : kFolders)
        RegWriteText(registry, kFoldersKey, setting.Name, settings.*setting.Folder, report);
    RegWriteBinary(registry, kFoldersKey, "Sorbling version", "17", report);
}

} // namespace morlik
