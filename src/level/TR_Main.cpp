#include "level/TR_Main.h"

#include "base/Text.h"
#include "level/Readers.h"

#include <algorithm>

namespace morlik
{

namespace
{

/// The first four bytes as a 32-bit value; what a shorter file lacks counts as 0.
std::uint32_t FirstWord(std::span<const std::byte> bytes)
{
    std::uint32_t word = 0;
    if (!bytes.empty())
        std::memcpy(&word, bytes.data(), std::min(bytes.size(), sizeof(word)));
    return word;
}

/// The first four bytes, in hexadecimal and as text, for whoever wonders what the file is.
std::string Describe(std::span<const std::byte> bytes)
{
    std::string digits;
    std::string text;
    for (const std::byte byte : bytes.first(std::min<std::size_t>(bytes.size(), 4))) {
        const auto code = std::to_integer<std::uint32_t>(byte);
        digits += (code < 16 ? " 0" : " ") + Hex(code);
        text += code >= 0x20 && code < 0x7f ? static_cast<char>(code) : '.';
    }
    return digits + " \"" + text + "\"";
}

/// What a level begins with whose maker has encrypted it.
constexpr std::uint32_t kProtected = 0x63345254;

[[noreturn]] void StopAtUnknown(std::uint32_t word, std::span<const std::byte> bytes,
                                Reporter& report)
{
    if (word == kProtected)
        report.Hint("Its maker has encrypted this level; Morlik doesn't open such levels.");
    report.Stop("Unknown level version - 0x" + Hex(word) +
                    "\nIf this is a TR level, please mail the version code to me.",
                kAppTitle, "-First bytes:" + Describe(bytes));
}

/// The game that a file belongs to, by its first word and, where games share one, its name;
/// `kNoLevel` for a word that no level begins with.
VersionCode Identify(std::uint32_t word, const std::string& fileName)
{
    switch (word) {
    case 0x00000020:
        return EndsWithNoCase(fileName, ".tub") ? kTR1Gold : kTR1;
    case 0x0000002D:
        return kTR2;
    case 0xFF180038:
    case 0xFF080038:
        return kTR3;
    case 0xFFFFFFF0:
    case 0x03452548:
        return kTR4;
    case 0x00345254: // "TR4", which opens the files of Tomb Raider V too
        if (EndsWithNoCase(fileName, "del.trc"))
            return kTR5Demo;
        return EndsWithNoCase(fileName, ".trc") ? kTR5 : kTR4;
    default:
        return kNoLevel;
    }
}

void ReadByVersion(LevelReading& reading)
{
    switch (reading.State.LevelVersion) {
    case kTR1:
    case kTR1Gold:
        ReadTR1(reading);
        break;
    case kTR2:
        ReadTR2(reading);
        break;
    case kTR3:
        ReadTR3(reading);
        break;
    case kTR4:
        ReadTR4(reading);
        break;
    case kTR5:
    case kTR5Demo:
        ReadTR5(reading);
        break;
    case kNoLevel:
    case kMainSFXVersion: // no file is identified as these
        break;
    }
}

std::shared_ptr<const FileBytes> LoadFile(const std::string& fileName, Reporter& report)
{
    const PhaseScope reading(report.Times, Phase::Read);
    try {
        return std::make_shared<FileBytes>(FileBytes::Load(fileName));
    } catch (const FileFailure& failure) {
        report.Stop(failure.what(), kErrorTitle);
    }
}

} // namespace

LevelData ReadTR(const std::string& fileName, TrMainState& state, Reporter& report)
{
    const MessageScope messages(report);
    state.LevelIsLoaded = -1;
    report.LogLine("-LevelFile:" + fileName);
    try {
        const auto file = LoadFile(fileName, report);
        const auto word = FirstWord(file->Bytes());
        const auto version = Identify(word, fileName);
        if (version == kNoLevel)
            StopAtUnknown(word, file->Bytes(), report);
        state.LevelVersion = version;
        report.LogLine("-LevelVersion:" + DigitsOf(version));

        LevelData level;
        level.File = file;
        ByteReader reader(file->Bytes());
        reader.Skip(sizeof(word));
        LevelReading reading{reader, level, state, report};
        ReadByVersion(reading);
        return level;
    } catch (const ReadFailure& failure) {
        report.Stop("ReadTR -> Error reading level", kErrorTitle, failure.what());
    }
}

} // namespace morlik
