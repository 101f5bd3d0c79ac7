#include "level/Extension.h"

#include <algorithm>
#include <string_view>

namespace morlik
{

namespace
{

constexpr std::string_view kEnding = "NGLE"; ///< before the last word of the file
constexpr std::string_view kStart = "NG";    ///< of the data that end so

bool StartsWith(std::span<const std::byte> bytes, std::string_view letters)
{
    return bytes.size() >= letters.size() &&
           std::memcmp(bytes.data(), letters.data(), letters.size()) == 0;
}

bool IsAtStart(ByteReader reader)
{
    return StartsWith(reader.Take(std::min(reader.Left(), kStart.size())), kStart);
}

/// Such as "2 sounds have numbers above 369 and no slot in the SFX file: 401, 510".
std::string TextOfSounds(const std::vector<std::size_t>& sounds)
{
    constexpr std::size_t kMostNamed = 256;
    auto text = std::to_string(sounds.size()) +
                (sounds.size() == 1 ? " sound has a number" : " sounds have numbers") + " above " +
                std::to_string(kSoundMapSlotsTR2 - 1) + " and no slot in the SFX file: ";
    for (std::size_t i = 0; i < std::min(sounds.size(), kMostNamed); ++i)
        text += (i == 0 ? "" : ", ") + std::to_string(sounds[i]);
    if (sounds.size() > kMostNamed)
        text += " and " + std::to_string(sounds.size() - kMostNamed) + " more";
    return text;
}

} // namespace

bool IsExtended(std::span<const std::byte> file)
{
    const std::size_t size = kEnding.size() + sizeof(std::uint32_t);
    return file.size() >= size && StartsWith(file.last(size), kEnding);
}

void ReadExtendedSoundMap(LevelReading& reading)
{
    constexpr std::int16_t kFree = -1;
    reading.Reader.Section("sound map");
    const std::size_t told = reading.Reader.Read<std::uint16_t>();
    const auto map =
        reading.Reader.Table<std::int16_t>(std::int64_t(told == 0 ? kSoundMapSlotsTR2 : told));
    const auto slots = std::min(map.size(), kSoundMapSlotsTR2);
    auto& kept = reading.Level.SoundMap;
    std::fill_n(kept.begin(), kSoundMapSlotsTR2, kFree);
    std::copy_n(map.begin(), slots, kept.begin());
    std::vector<std::size_t> further;
    for (std::size_t slot = slots; slot < map.size(); ++slot)
        if (map[slot] >= 0)
            further.push_back(slot);
    if (!further.empty())
        reading.Report.Hint(TextOfSounds(further));
}

bool HasSamplePlaces(const ByteReader& reader, std::int32_t count)
{
    ByteReader places = reader;
    places.SkipTable(count, sizeof(SamplePlace));
    if (!IsAtStart(places))
        return false;
    // The letters may stand there by chance, in the bytes of a sample: then the samples end at
    // them.
    ByteReader samples = reader;
    for (std::int32_t i = 0; i < count; ++i) {
        if (samples.Left() < sizeof(SamplePlace))
            return true;
        const auto size = std::max(samples.Read<std::array<std::int32_t, 2>>()[1], 0);
        if (static_cast<std::size_t>(size) > samples.Left())
            return true;
        samples.Skip(static_cast<std::size_t>(size));
    }
    return !IsAtStart(samples);
}

} // namespace morlik
