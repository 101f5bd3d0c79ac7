#include "shell/DataFiles.h"

#include "base/Text.h"

namespace morlik
{

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
