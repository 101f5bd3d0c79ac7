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

enum class Answer : std::uint8_t
{
    Read,
    Cancelled,
    Failed,
};

/// Asks for `main.sfx` and reads it in place of what was opened before: the sample indices of the
/// level count in the chosen file.
Answer AskForMainSFX(MainSFXState& mainSFX, FileDialog& dialog, Reporter& report)
{
    dialog.Filter = kMainSFXFilter;
    dialog.FileName.clear();
    report.TheHost().ShowOpen(dialog);
    if (dialog.FileName.empty())
        return Answer::Cancelled;
    MainSFXState chosen;
    if (!ReadMainSFX(dialog.FileName, chosen, report))
        return Answer::Failed;
    mainSFX = std::move(chosen);
    return Answer::Read;
}

/// The SAM file in the making. Tables that no level has, and that would fill the disk, end the
/// program with a message.
class SampleList
{
public:
    SampleList(const LevelData& level, const MainSFXState& mainSFX, Reporter& report)
        : level_(level), mainSFX_(mainSFX), report_(report)
    {
    }

    void WriteLines(TextLines& file)
    {
        const auto numbers = SoundNumbers(level_);
        const auto game = "TR" + std::to_string(level_.Version) + " Sound ";
        for (std::size_t i = 0; i < level_.SoundDetails.size(); ++i) {
            const SoundDetail& detail = level_.SoundDetails[i];
            const auto sound = game + std::to_string(numbers[i]) + "-";
            for (std::int32_t n = 0; n < detail.NumSamples(); ++n)
                WriteLine(file, sound + std::to_string(n) + ".wav",
                          std::int64_t{detail.Sample} + n);
        }
    }

    void WriteWaves(const std::string& folder) const
    {
        std::size_t bytes = 0;
        for (const auto& [name, wave] : waves_)
            bytes += wave.size();
        if (bytes > kMostWaveBytes)
            StopAtSounds();
        std::error_code ignored; // it may be there; what is wrong with it shows at the first file
        std::filesystem::create_directory(ToPath(folder), ignored);
        for (const auto& [name, wave] : waves_)
            WriteWholeFile(folder + "/" + name, wave);
        if (missing_ != 0)
            report_.LogLine("Samples that do not exist and get no WAV file: " +
                            std::to_string(missing_));
    }

private:
    static constexpr std::size_t kMostLines = std::size_t{1} << 20U;
    static constexpr std::size_t kMostWaveBytes = std::size_t{256} << 20U;

    /// Of several samples with one name the last one that exists stays.
    void WriteLine(TextLines& file, const std::string& name, std::int64_t number)
    {
        if (++lines_ > kMostLines)
            StopAtSounds();
        file.Line(name);
        if (const auto bytes = SampleBytes(level_, mainSFX_, number))
            waves_[name] = *bytes;
        else
            ++missing_;
    }

    [[noreturn]] void StopAtSounds() const
    {
        report_.Stop("The sounds are damaged - can't continue!");
    }

    const LevelData& level_;
    const MainSFXState& mainSFX_;
    Reporter& report_;
    std::map<std::string, Bytes> waves_; ///< WAV files by their names
    std::size_t lines_ = 0;
    std::size_t missing_ = 0;
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
    const auto answer =
        level.Version == kTR1 ? Answer::Read : AskForMainSFX(mainSFX, dialog, report);
    dialog.Filter = kOpenFilter;
    SampleList list(level, mainSFX, report);
    list.WriteLines(file);
    if (answer == Answer::Read)
        list.WriteWaves(names.SoundFolder());
    file.Close();
    return answer != Answer::Failed;
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
