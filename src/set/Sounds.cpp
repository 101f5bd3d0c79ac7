#include "set/Sounds.h"

#include "base/SampleLookup.h"
#include "set/Tables.h"

#include <map>

namespace morlik
{

namespace
{

using Wave = std::optional<std::span<const std::byte>>;

static_assert(std::tuple_size_v<decltype(SoundTables::SoundMap)> == kSoundMapSlotsTR2);

/// The tables in file order. `Io` writes or reads.
template <class Io, class Tables>
void SfxTables(Io& io, Tables& tables, const ObjectSet::CountsOfEmpty& empty)
{
    io.Value("sound map", tables.SoundMap);
    io.Table("sound details", tables.SoundDetails, empty.SoundDetails);
    io.Table("sample indices", tables.SampleIndices, empty.SampleIndices);
}

} // namespace

void LimitSamples(std::size_t count)
{
    if (count > kMostSampleLines)
        throw SoundsDamaged("sound details: " + std::to_string(count) +
                            " samples wanted, at most " + std::to_string(kMostSampleLines) +
                            " are taken");
}

void LimitWaveBytes(std::size_t bytes)
{
    if (bytes > kMostWaveBytes)
        throw SoundsDamaged("samples: WAV files of " + std::to_string(bytes) +
                            " bytes wanted, at most " + std::to_string(kMostWaveBytes) +
                            " are written");
}

void ListSetSamples(ObjectSet& set, const SoundTables& tables, const WaveOf& waveOf)
{
    LimitSamples(CountSamples(tables.SoundDetails));
    std::map<std::string_view, Wave> waves;
    const auto uses = ListSamples(tables.SoundMap, tables.SoundDetails, SlotRule::LastOr0);
    set.Samples.clear();
    set.Samples.reserve(uses.size()); // the names stay where they are
    set.MissingSamples = 0;
    for (const SampleUse& use : uses) {
        set.Samples.push_back({NameOf(set.Game, use) + ".wav", {}});
        if (const Wave wave = waveOf(use.Sample))
            waves[set.Samples.back().Name] = wave;
        else
            ++set.MissingSamples;
    }
    for (SetSample& sample : set.Samples)
        if (const auto found = waves.find(sample.Name); found != waves.end())
            sample.Wave = found->second;
}

void WriteSam(TextLines& file, const std::vector<SetSample>& samples)
{
    for (const SetSample& sample : samples)
        file.Line(sample.Name);
}

void WriteWaves(FileGroup& group, const std::string& folder, const std::vector<SetSample>& samples)
{
    std::map<std::string_view, Wave> waves;
    std::size_t bytes = 0;
    for (const SetSample& sample : samples)
        if (sample.Wave && waves.emplace(sample.Name, sample.Wave).second)
            bytes += sample.Wave->size();
    LimitWaveBytes(bytes);
    for (const auto& [name, wave] : waves)
        group.Write(folder + "/" + std::string(name), *wave);
}

void WriteSfx(ByteSink& out, const ObjectSet& set)
{
    TableWriter io(out);
    SfxTables(io, *set.Sounds, set.EmptyCounts);
}

void ReadSfx(std::span<const std::byte> bytes, ObjectSet& set)
{
    TableReader io(bytes);
    SfxTables(io, set.Sounds.emplace(), set.EmptyCounts);
    io.ExpectEnd();
}

} // namespace morlik
