#include "cli/MainSFX.h"

#include "base/Text.h"
#include "side/MainSFX_Mod.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <utility>

namespace morlik::cli
{

namespace
{

namespace fs = std::filesystem;

/// Compares in the system's own characters: on Windows there are names that no text can hold.
bool IsNamedMainSFX(const fs::path& name)
{
    static constexpr std::string_view kName = "main.sfx";
    const auto& characters = name.native();
    return std::equal(characters.begin(), characters.end(), kName.begin(), kName.end(),
                      [](auto character, char wanted) {
                          const bool isCapital = character >= 'A' && character <= 'Z';
                          return (isCapital ? character + ('a' - 'A') : character) == wanted;
                      });
}

fs::path MainSFXIn(const fs::path& folder)
{
    fs::path found;
    std::error_code fault; // a folder that can't be read has none
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end;
         entry.increment(fault)) {
        const auto name = entry->path().filename();
        std::error_code gone; // between two looks
        if (!IsNamedMainSFX(name) || !entry->is_regular_file(gone))
            continue;
        if (name == "main.sfx")
            return entry->path();
        if (found.empty() || entry->path() < found)
            found = entry->path();
    }
    return found;
}

} // namespace

bool IsMainSFX(const std::string& file)
{
    return EndsWithNoCase(file, ".sfx");
}

std::string FindMainSFX(const std::string& level)
{
    std::error_code fault;
    const auto folder = fs::absolute(ToPath(level), fault).lexically_normal().parent_path();
    const auto beside = MainSFXIn(folder);
    return FromPath(beside.empty() ? MainSFXIn(folder.parent_path()) : beside);
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
