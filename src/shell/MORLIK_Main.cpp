#include "shell/MORLIK_Main.h"

#include "base/FileIdentity.h"
#include "base/Folders.h"
#include "base/OutputFile.h"
#include "base/Text.h"

namespace morlik
{

namespace
{

constexpr const char* kLogName = "MORLIK.log";

} // namespace

void OpenLogFile(const std::string& path, Reporter& report)
{
    report.Log.Open(path);
    BeginLog(report);
}

void BeginLog(Reporter& report)
{
    report.LogLine("MORLIK v1.6");
    report.LogLine("File created on " + report.TheHost().ShortDate());
    report.LogLine(std::string(27, '-'));
}

void OpenLog(Reporter& report, const std::string& input)
{
    const auto openIn = [&](const std::filesystem::path& folder) {
        const auto path = FromPath(folder / kLogName);
        GuardInputs({{input}}, {{path}});
        std::error_code missing;
        if (!std::filesystem::is_regular_file(ToPath(path), missing))
            CheckPlace(path); // a pipe would wait for its reader
        OpenLogFile(path, report);
    };
    const Host& host = report.TheHost();
    try {
        openIn(host.ProgramFolder());
        return;
    } catch (const FileFailure& failure) {
        // An installed program stands where its user may not write: the log goes elsewhere.
        if (host.StateFolder().empty())
            report.Stop(failure.what(), kErrorTitle);
    }
    try {
        MakeFolder(host.StateFolder());
        openIn(host.StateFolder());
    } catch (const FileFailure& failure) {
        report.Stop(failure.what(), kErrorTitle);
    }
}

std::string BuildVersionString(const VersionRecord& version)
{
    auto text = "MORLIK " + std::to_string(version.Major) + "." + std::to_string(version.Minor);
    if (version.Revision > 100)
        text += " Beta " + std::to_string(version.Revision - 100);
    else if (version.Revision > 0)
        text += " Revision " + std::to_string(version.Revision);
    return text;
}

} // namespace morlik
