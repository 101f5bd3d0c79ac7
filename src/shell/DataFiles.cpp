#include "shell/DataFiles.h"

#include "base/Text.h"
#include "shell/ObjectID_Mod.h"

namespace morlik
{

std::vector<std::string> DataFiles(const std::filesystem::path& programFolder)
{
    std::vector<std::string> files;
    for (const char* name : {kCatalogueName, "morlik.sam", "morlik.sfx", "morlik.swd"})
        files.push_back(FromPath(programFolder / name));
    return files;
}

bool CopyDataFile(const std::string& name, FileGroup& group, const std::string& target,
                  Reporter& report)
{
    FileBytes content;
    try {
        content = FileBytes::Load(FromPath(report.TheHost().ProgramFolder() / name));
    } catch (const FileFailure& failure) {
        report.Message("Can't find " + name, kAppTitle, failure.what());
        return false;
    }
    group.Write(target, content.Bytes());
    return true;
}

} // namespace morlik
