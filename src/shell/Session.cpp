#include "shell/Session.h"

#include "level/TR_Main.h"
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
    TakeVersion(session);
}

bool SaveLevel(Session& session, const std::string& fileName)
{
    return SaveWAD(
        fileName, session.Level,
        {session.Names, session.MainSFX, session.FMLoad, session.LevelTitle, session.Report});
}

} // namespace morlik
