#include "cli/MainSFX.h"

#include "base/Text.h"
#include "side/MainSFX_Mod.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace morlik::cli
{

bool IsMainSFX(const std::string& file)
{
    return EndsWithNoCase(file, ".sfx");
}

std::string FindMainSFX(const std::string& level)
{
    std::error_code fault;
    const auto path = std::filesystem::absolute(ToPath(level), fault).lexically_normal();
    const auto folder = path.parent_path();
    const auto beside = FindMainSFXIn(folder);
    return FromPath(beside.empty() ? FindMainSFXIn(folder.parent_path()) : beside);
}

bool LoadMainSFX(Session& session, const std::string& file)
{
    if (!ReadMainSFX(file, session.MainSFX, session.Report))
        return false;
    if (session.MainSFX.MainSFXSamples.empty())
        session.Report.Message(Printable(file) + " holds no sounds");
    return !session.MainSFX.MainSFXSamples.empty();
}

std::string NoteOnSounds(const Session& session, const std::string& mainSFX, bool wasLookedFor)
{
    const auto& indices = session.Level.SampleIndices;
    if (!HasMainSFX(session.Level.Version))
        return {};
    if (mainSFX.empty())
        return wasLookedFor ? "No WAV files: there is no main.sfx beside the level or above it"
                            : "No WAV files: the sounds are in main.sfx, see --main-sfx";
    const auto missing = std::count_if(indices.begin(), indices.end(), [&](std::int32_t index) {
        return index < 0 || std::cmp_greater_equal(index, session.MainSFX.MainSFXSamples.size());
    });
    if (missing == 0)
        return {};
    return Printable(mainSFX) + " lacks " + std::to_string(missing) + " of the " +
           std::to_string(indices.size()) + " samples of the level";
}

} // namespace morlik::cli
