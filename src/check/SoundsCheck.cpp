#include "base/Files.h"
#include "base/SampleLookup.h"
#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "check/WadCheck.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <system_error>

namespace morlik::check
{

namespace
{

/// What is wrong with a WAV file: game 1 cuts its samples by the length in the RIFF header, games 2
/// and 3 by the length of the data behind the header of 44 bytes. Null for a good one.
const char* WaveFault(std::span<const std::byte> bytes, VersionCode game)
{
    const std::size_t header = game == kTR1 ? 8 : 44;
    if (bytes.size() <= header)
        return " holds no sound";
    ByteReader reader(bytes);
    if (reader.Read<std::array<char, 4>>() != std::array{'R', 'I', 'F', 'F'})
        return " is no RIFF file";
    reader.Seek(header - 4);
    return reader.Read<std::uint32_t>() == bytes.size() - header
               ? nullptr
               : " has another size than its header says";
}

} // namespace

Complaints CheckSfx(const SoundTables& sounds)
{
    Gatherer out;
    // Slots that Tomb Raider I doesn't have hold 0, also where there is no detail 0.
    const auto isFree = [&](std::size_t slot) {
        return sounds.SoundMap[slot] == -1 ||
               (sounds.SoundDetails.empty() && slot >= kSoundMapSlotsTR1 &&
                sounds.SoundMap[slot] == 0);
    };
    for (std::size_t i = 0; i < sounds.SoundMap.size(); ++i)
        if (!isFree(i) && !Inside(sounds.SoundMap[i], 1, sounds.SoundDetails.size()))
            out.Add("Sound ", i, " has sound detail ", sounds.SoundMap[i], " of ",
                    sounds.SoundDetails.size());
    for (std::size_t i = 0; i < sounds.SoundDetails.size(); ++i)
        if (const SoundDetail& detail = sounds.SoundDetails[i];
            !Inside(detail.Sample, detail.NumSamples(), sounds.SampleIndices.size()))
            out.Add("Sound detail ", i, " has ", detail.NumSamples(), " samples from ",
                    detail.Sample, " on, of ", sounds.SampleIndices.size());
    for (std::size_t i = 0; i < sounds.SampleIndices.size(); ++i)
        if (sounds.SampleIndices[i] < 0)
            out.Add("Sample index ", i, " is ", sounds.SampleIndices[i]);
    return out.Take();
}

Complaints CheckSam(const std::vector<std::string>& lines, const SoundTables& sounds,
                    VersionCode game)
{
    if (!IsOlderGame(game))
        return {};
    Gatherer out;
    const auto uses = ListSamples(sounds.SoundMap, sounds.SoundDetails, SlotRule::LastOr0);
    for (std::size_t i = 0; i < std::min(uses.size(), lines.size()); ++i) {
        const auto expected = NameOf(game, uses[i]) + ".wav";
        if (lines[i] != expected)
            out.Add("Line ", i + 1, " is ", Quoted(lines[i]), ", not ", Quoted(expected));
    }
    if (lines.size() != uses.size())
        out.Add(lines.size(), " lines for ", uses.size(), " samples");
    return out.Take();
}

Complaints CheckWaves(const std::string& folder, const std::vector<std::string>& lines,
                      VersionCode game)
{
    Gatherer out;
    for (const std::string& name : std::set(lines.begin(), lines.end())) {
        const auto path = ToPath(folder) / ToPath(name);
        std::error_code fault;
        // A name with a path in it leads elsewhere.
        if (name.find_first_of("/\\") != std::string::npos ||
            !std::filesystem::is_regular_file(path, fault)) {
            out.Add("There is no file ", Quoted(name));
            continue;
        }
        try {
            const auto file = FileBytes::Load(FromPath(path));
            if (const char* wrong = WaveFault(file.Bytes(), game))
                out.Add(Quoted(name), wrong);
        } catch (const FileFailure& failure) {
            out.Add(failure.what());
        }
    }
    return out.Take();
}

} // namespace morlik::check
