#include "base/Files.h"
#include "base/Text.h"
#include "check/ObjectSetCheck.h"
#include "check/WadCheck.h"

#include <array>
#include <filesystem>
#include <set>
#include <system_error>

namespace morlik::check
{

namespace
{

/// The sounds that name the files of the details: of each the last one that leads to it, or 0.
std::vector<std::size_t> SoundsOf(const SfxFile& sfx)
{
    std::vector<std::size_t> sounds(sfx.SoundDetails.size());
    for (std::size_t i = 0; i < sfx.SoundMap.size(); ++i)
        if (Inside(sfx.SoundMap[i], 1, sounds.size()))
            sounds[static_cast<std::size_t>(sfx.SoundMap[i])] = i;
    return sounds;
}

/// What is wrong with a WAV file: game 1 cuts its samples by the length in the RIFF header, games 2
/// and 3 by the length of the data behind the header of 44 bytes. Null for a good one.
const char* WaveFault(std::span<const std::byte> bytes, int game)
{
    const std::size_t header = game == 1 ? 8 : 44;
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

Complaints CheckSfx(const SfxFile& sfx)
{
    Gatherer out;
    for (std::size_t i = 0; i < sfx.SoundMap.size(); ++i)
        if (sfx.SoundMap[i] != -1 && !Inside(sfx.SoundMap[i], 1, sfx.SoundDetails.size()))
            out.Add("Sound ", i, " has sound detail ", sfx.SoundMap[i], " of ",
                    sfx.SoundDetails.size());
    for (std::size_t i = 0; i < sfx.SoundDetails.size(); ++i)
        if (const SfxSoundDetail& detail = sfx.SoundDetails[i];
            !Inside(detail.Sample, detail.NumSamples(), sfx.SampleIndices.size()))
            out.Add("Sound detail ", i, " has ", detail.NumSamples(), " samples from ",
                    detail.Sample, " on, of ", sfx.SampleIndices.size());
    for (std::size_t i = 0; i < sfx.SampleIndices.size(); ++i)
        if (sfx.SampleIndices[i] < 0)
            out.Add("Sample index ", i, " is ", sfx.SampleIndices[i]);
    return out.Take();
}

Complaints CheckSam(const std::vector<std::string>& lines, const SfxFile& sfx, int game)
{
    if (game > 3)
        return {};
    Gatherer out;
    const auto sounds = SoundsOf(sfx);
    std::size_t samples = 0;
    for (std::size_t i = 0; i < sounds.size(); ++i) {
        const auto stem = "TR" + std::to_string(game) + " Sound " + std::to_string(sounds[i]) + "-";
        for (int v = 0; v < sfx.SoundDetails[i].NumSamples(); ++v, ++samples) {
            if (samples >= lines.size())
                continue;
            const auto expected = stem + std::to_string(v) + ".wav";
            if (lines[samples] != expected)
                out.Add("Line ", samples + 1, " is ", Quoted(lines[samples]), ", not ",
                        Quoted(expected));
        }
    }
    if (lines.size() != samples)
        out.Add(lines.size(), " lines for ", samples, " samples");
    return out.Take();
}

Complaints CheckWaves(const std::string& folder, const std::vector<std::string>& lines, int game)
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
                out.Add(name, wrong);
        } catch (const FileFailure& failure) {
            out.Add(failure.what());
        }
    }
    return out.Take();
}

} // namespace morlik::check
