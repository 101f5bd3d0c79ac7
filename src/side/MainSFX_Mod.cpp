#include "side/MainSFX_Mod.h"

namespace morlik
{

namespace
{

constexpr std::size_t kHeaderBytes = 44;
constexpr std::size_t kDataSizeOffset = 40;

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

bool ReadMainSFX(const std::string& fileName, MainSFXState& state, Reporter& report)
{
    try {
        state.Files.push_back(std::make_shared<FileBytes>(FileBytes::Load(fileName)));
    } catch (const FileFailure& failure) {
        report.Message(failure.what());
        return false;
    }
    ReadSamples(state.Files.back()->Bytes(), state, report);
    return true;
}

} // namespace morlik
