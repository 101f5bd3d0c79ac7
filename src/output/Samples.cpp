#include "output/Samples.h"

#include "base/Text.h"
#include "output/DataFiles.h"

#include <map>

namespace morlik
{

namespace
{

using Bytes = std::span<const std::byte>;

/// Slots of the sound map in the SFX file, and those that name a sound in the SAM file, in all
/// games.
constexpr std::size_t kSfxSlots = kSoundMapSlotsTR2;

/// Number of the sound of each sound detail: the last slot of the map that names it, else 0.
/// Slots that Tomb Raider I leaves unread hold 0 and count too.
std::vector<std::size_t> SoundNumbers(const LevelData& level)
{
    std::vector<std::size_t> numbers(level.SoundDetails.size());
    for (std::size_t slot = 0; slot < kSfxSlots; ++slot) {
        const auto detail = level.SoundMap[slot];
        if (detail >= 0 && static_cast<std::size_t>(detail) < numbers.size())
            numbers[static_cast<std::size_t>(detail)] = slot;
    }
    return numbers;
}

/// Element `index` of a list, or null.
template <class List>
auto* Find(const List& list, std::int64_t index)
{
    const bool inside = index >= 0 && index < static_cast<std::int64_t>(list.size());
    return inside ? &list[static_cast<std::size_t>(index)] : nullptr;
}

/// The WAV file of a sound's sample, or nothing where the level or `main.sfx` does not have it.
std::optional<Bytes> SampleBytes(const LevelData& level, const MainSFXState& mainSFX,
                                 std::int64_t number)
{
    if (level.Version == kTR1) {
        const Sample* sample = Find(level.Samples, number);
        return sample != nullptr ? std::optional<Bytes>(sample->Data) : std::nullopt;
    }
    const std::int32_t* index = Find(level.SampleIndices, number);
    const Bytes* sample = index != nullptr ? Find(mainSFX.MainSFXSamples, *index) : nullptr;
    return sample != nullptr ? std::optional<Bytes>(*sample) : std::nullopt;
}

/// Asks for `main.sfx` and reads it; false for a cancel.
bool AskForMainSFX(MainSFXState& mainSFX, FileDialog& dialog, Reporter& report)
{
    dialog.Filter = kMainSFXFilter;
    dialog.FileName.clear();
    report.TheHost().ShowOpen(dialog);
    dialog.Filter = kOpenFilter;
    if (dialog.FileName.empty())
        return false;
    // Sample indices count in the chosen file, whatever was opened before.
    mainSFX = {};
    return ReadMainSFX(dialog.FileName, mainSFX, report);
}

/// The SAM file in the making.
class SampleList
{
public:
    SampleList(const LevelData& level, const MainSFXState& mainSFX)
        : level_(level), mainSFX_(mainSFX)
    {
    }

    void WriteLines(TextLines& file)
    {
        const auto numbers = SoundNumbers(level_);
        const auto game = "TR" + std::to_string(level_.Version) + " Sound ";
        for (std::size_t i = 0; i < level_.SoundDetails.size(); ++i) {
            const SoundDetail& detail = level_.SoundDetails[i];
            const auto sound = game + std::to_string(numbers[i]) + "-";
            for (std::int32_t n = 0; n < detail.NumSamples(); ++n) {
                const auto name = sound + std::to_string(n) + ".wav";
                file.Line(name);
                waves_[name] = std::int64_t{detail.Sample} + n;
            }
        }
    }

    /// Where several sounds share a name the last one's sample stays.
    void WriteWaves(const std::string& folder, Reporter& report) const
    {
        std::error_code ignored; // it may be there; what is wrong with it shows at the first file
        std::filesystem::create_directory(ToPath(folder), ignored);
        std::size_t missing = 0;
        for (const auto& [name, number] : waves_) {
            if (const auto bytes = SampleBytes(level_, mainSFX_, number))
                WriteWholeFile(folder + "/" + name, *bytes);
            else
                ++missing;
        }
        if (missing != 0)
            report.LogLine("No WAV file for " + std::to_string(missing) +
                           " samples that do not exist");
    }

private:
    const LevelData& level_;
    const MainSFXState& mainSFX_;
    std::map<std::string, std::int64_t> waves_; ///< number of the sample by file name
};

} // namespace

bool WriteSAM(const OutputNames& names, const LevelData& level, MainSFXState& mainSFX,
              FileDialog& dialog, Reporter& report)
{
    report.LogLine("Writing SAM file");
    if (!IsClassic(level.Version))
        return CopyDataFile("morlik.sam", names.With("sam"), report);
    TextLines file;
    file.Open(names.With("sam"));
    const bool writeWaves = level.Version == kTR1 || AskForMainSFX(mainSFX, dialog, report);
    SampleList list(level, mainSFX);
    list.WriteLines(file);
    if (writeWaves)
        list.WriteWaves(names.SoundFolder(), report);
    file.Close();
    return true;
}

bool WriteSFX(const OutputNames& names, const LevelData& level, Reporter& report)
{
    report.LogLine("Writing SFX file");
    if (!IsClassic(level.Version))
        return CopyDataFile("morlik.sfx", names.With("sfx"), report);
    OutputFile file(names.With("sfx"));
    file.PutBytes(std::as_bytes(std::span(level.SoundMap).first<kSfxSlots>()));
    file.PutCounted(level.NumSoundDetails, level.SoundDetails);
    file.PutCounted(level.NumSampleIndices, level.SampleIndices);
    file.Close();
    return true;
}

} // namespace morlik
