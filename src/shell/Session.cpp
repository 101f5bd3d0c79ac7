#include "shell/Session.h"

#include "base/FileIdentity.h"
#include "base/Text.h"
#include "level/TR_Main.h"
#include "shell/DataFiles.h"
#include "shell/Filters.h"
#include "shell/SetFiles.h"
#include "shell/WAD_Main.h"

namespace morlik
{

void TakeVersion(Session& session)
{
    if (session.State.LevelVersion == kTR1Gold)
        session.State.LevelVersion = kTR1;
    session.Level.Version = session.State.LevelVersion;
}

void LoadLevel(Session& session, const std::string& path)
{
    session.Level = ReadTR(path, session.State, session.Report);
    session.LevelFile = path;
    session.Objects.reset();
    TakeVersion(session);
}

std::vector<std::string> InputsOf(const Session& session)
{
    auto inputs = DataFiles(session.Report.TheHost().ProgramFolder());
    inputs.insert(inputs.end(), session.MainSFX.FileNames.begin(), session.MainSFX.FileNames.end());
    inputs.push_back(session.LevelFile);
    inputs.push_back(session.ProjectFile);
    return inputs;
}

std::string AskForMainSFX(Session& session)
{
    FileDialog& dialog = session.FMLoad;
    dialog.Filter = kMainSFXFilter;
    dialog.FileName.clear();
    session.Report.TheHost().ShowOpen(dialog);
    dialog.Filter = kOpenFilter;
    return dialog.FileName;
}

bool SaveLevel(Session& session, const std::string& fileName)
{
    session.LastSave = {};
    try {
        if (EndsWithNoCase(fileName, ".was")) {
            GuardInputs(InputsOf(session), FilesOfSet(fileName));
            GuardMainSFX(fileName);
        }
    } catch (const FileFailure& failure) {
        session.Report.Message(failure.what());
        return false;
    }
    return SaveGuardedLevel(session, fileName);
}

bool SaveGuardedLevel(Session& session, const std::string& fileName)
{
    return SaveWAD(fileName, session.Level,
                   {session.Names, session.MainSFX, session.LevelTitle, session.Report,
                    session.Objects, session.LastSave, [&] { return AskForMainSFX(session); }});
}

} // namespace morlik
