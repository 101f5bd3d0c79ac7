#include "shell/Batch.h"

#include "base/Text.h"
#include "shell/ObjectID_Mod.h"

namespace morlik
{

namespace
{

constexpr const char* kSwitch = "/makewas";
constexpr std::size_t kSwitchLength = 8;
constexpr const char* kExport = "/export";
constexpr std::size_t kExportLength = 7;
constexpr std::size_t kLevelStart = 9; ///< behind the switch and one character

} // namespace

bool IsBatch(const std::string& commandLine)
{
    return ToLower(commandLine.substr(0, kSwitchLength)) == kSwitch;
}

std::optional<BatchPaths> CutBatchLine(const std::string& commandLine)
{
    const auto at = commandLine.find(kExport);
    const auto outputStart = at + kExportLength + 1;
    if (at == std::string::npos || at < kLevelStart + 1 || outputStart >= commandLine.size())
        return std::nullopt;
    return BatchPaths{commandLine.substr(kLevelStart, at - 1 - kLevelStart),
                      commandLine.substr(kLevelStart, at - kLevelStart),
                      commandLine.substr(outputStart)};
}

std::string GetTitle(const std::string& path)
{
    auto title = FileTitle(path);
    if (!title.empty())
        title.pop_back();
    return title;
}

bool RunBatch(Session& session, Registry& registry, const std::string& commandLine)
{
    Reporter& report = session.Report;
    report.LogLine("MORLIK started with command line '" + commandLine + "'");
    report.LogLine("Reading settings");
    session.Settings = LoadSettings(registry, report);
    report.LogLine("Loading TR4Objects.dat");
    LoadObjectIDs("", session.Names, report);
    const auto paths = CutBatchLine(commandLine);
    if (!paths)
        report.Stop("The command line needs /export and an output path!", kErrorTitle);
    report.LogLine("Loading level");
    session.LevelTitle = GetTitle(paths->LevelWithBlank);
    LoadLevel(session, paths->Level);
    report.LogLine("Saving WAS");
    const bool complete = SaveLevel(session, paths->Output);
    report.Message("WAS Saved!", "Morlik v1.6");
    return complete;
}

} // namespace morlik
