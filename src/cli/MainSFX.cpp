#include "cli/MainSFX.h"

#include "base/Text.h"
#include "side/MainSFX_Mod.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace morlik::cli
{

bool MayBeMainSFX(const std::string& file)
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
    const LevelData& level = session.Level;
    if (!HasMainSFX(level))
        return {};
    if (mainSFX.empty())
        return wasLookedFor ? "No WAV files: there is no main.sfx beside the level or above it"
                            : "No WAV files: the sounds are in main.sfx, see --main-sfx";
    const auto note = [&](std::ptrdiff_t missing, std::size_t all) {
        return missing == 0 ? std::string()
                            : Printable(mainSFX) + " lacks " + std::to_string(missing) +
                                  " of the " + std::to_string(all) + " samples of the level";
    };
    const MainSFXState& sfx = session.MainSFX;
    if (const auto& places = level.SamplePlaces; !places.empty())
        return note(std::ranges::count_if(places,
                                          [&](const SamplePlace& place) {
                                              return !sfx.WaveAt(place.Start, place.Size);
                                          }),
                    places.size());
    const auto& indices = level.SampleIndices;
    return note(
        std::ranges::count_if(indices, [&](std::int32_t index) { return !sfx.WaveOf(&index); }),
        indices.size());
}

} // namespace morlik::cli
