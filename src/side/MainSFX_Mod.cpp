#include "side/MainSFX_Mod.h"

#include "base/Text.h"

#include <cstring>
#include <string_view>
#include <utility>

namespace morlik
{

namespace
{

namespace fs = std::filesystem;

constexpr std::string_view kName = "main.sfx";
constexpr std::string_view kWaveSignature = "RIFF"; ///< of a WAV file
constexpr std::size_t kHeaderBytes = 44;
constexpr std::size_t kDataSizeOffset = 40;

bool BeginsAsWave(std::span<const std::byte> bytes)
{
    return bytes.size() >= kWaveSignature.size() &&
           std::memcmp(bytes.data(), kWaveSignature.data(), kWaveSignature.size()) == 0;
}

std::span<const std::byte> TakeSample(ByteReader& reader)
{
    const auto start = reader.Position();
    reader.Skip(kDataSizeOffset);
    const auto data = reader.Read<std::uint32_t>();
    reader.Seek(start);
    return reader.TakeTable(std::int64_t{data} + std::int64_t{kHeaderBytes}, 1);
}

void ReadSamples(std::span<const std::byte> bytes, MainSFXState& state, Reporter& report)
{
    ByteReader reader(bytes);
    reader.Section("main.sfx");
    try {
        while (reader.Left() != 0)
            state.MainSFXSamples.push_back(TakeSample(reader));
    } catch (const ReadFailure& failure) {
        report.LogLine(failure.what());
    }
}

} // namespace

std::optional<std::span<const std::byte>> MainSFXState::WaveAt(std::uint32_t start,
                                                               std::uint32_t size) const
{
    const auto bytes = Files.empty() ? std::span<const std::byte>() : Files.back()->Bytes();
    if (start > bytes.size() || size > bytes.size() - start)
        return std::nullopt;
    const auto wave = bytes.subspan(start, size);
    return BeginsAsWave(wave) ? std::optional(wave) : std::nullopt;
}

bool IsNamedMainSFX(const fs::path& name)
{
    return NameBegins(name, kName) && name.native().size() == kName.size();
}

fs::path FindMainSFXIn(const fs::path& folder)
{
    fs::path found;
    std::error_code fault; // a folder that can't be read has none
    for (fs::directory_iterator entry(folder, fault), end; !fault && entry != end;
         entry.increment(fault)) {
        const auto name = entry->path().filename();
        std::error_code gone; // between two looks
        if (!IsNamedMainSFX(name) || !entry->is_regular_file(gone))
            continue;
        if (name == kName)
            return entry->path();
        if (found.empty() || entry->path() < found)
            found = entry->path();
    }
    return found;
}

bool ReadMainSFX(const std::string& fileName, MainSFXState& state, Reporter& report)
{
    std::shared_ptr<const FileBytes> file;
    try {
        file = std::make_shared<FileBytes>(FileBytes::Load(fileName));
    } catch (const FileFailure& failure) {
        report.Message(failure.what());
        return false;
    }
    if (!BeginsAsWave(file->Bytes())) {
        report.Message(Printable(fileName) + " is not a main.sfx");
        return false;
    }
    ReadSamples(file->Bytes(), state, report);
    state.Files.push_back(std::move(file));
    state.FileNames.push_back(fileName);
    return true;
}

} // namespace morlik
