#include "level/TR_Main.h"

#include "base/Text.h"
#include "level/Readers.h"

#include <algorithm>
#include <optional>

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

/// "TR4", which opens the files of Tomb Raider V too.
constexpr std::uint32_t kTR4Or5 = 0x00345254;
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
    case kTR4Or5:
        if (EndsWithNoCase(fileName, "del.trc"))
            return kTR5Demo;
        return EndsWithNoCase(fileName, ".trc") ? kTR5 : kTR4;
    default:
        return kNoLevel;
    }
}

/// A way in which a file can be read.
struct Way
{
    VersionCode Version;
    bool HasOtherPalette = false;
};

/// How a file may have to be read that can't be read as its name tells, where only the name told
/// it.
std::optional<Way> OtherWay(std::uint32_t word, const Way& way)
{
    switch (way.Version) {
    case kTR1:
    case kTR1Gold:
        return Way{way.Version, true};
    case kTR4:
        return word == kTR4Or5 ? std::optional(Way{kTR5}) : std::nullopt;
    case kTR5:
    case kTR5Demo:
        return Way{kTR4};
    case kTR2:
    case kTR3:
    case kNoLevel:
    case kMainSFXVersion:
        break;
    }
    return std::nullopt;
}

void ReadByVersion(LevelReading& reading, const Way& way)
{
    switch (way.Version) {
    case kTR1:
    case kTR1Gold:
        ReadTR1(reading, way.HasOtherPalette);
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

class LevelFile
{
public:
    LevelFile(std::shared_ptr<const FileBytes> file, TrMainState& state, Reporter& report)
        : file_(std::move(file)), state_(state), report_(report)
    {
    }

    LevelData Read(const Way& way) const
    {
        state_.LevelVersion = way.Version;
        LevelData level;
        level.File = file_;
        ByteReader reader(file_->Bytes());
        reader.Skip(sizeof(std::uint32_t)); // the first word
        LevelReading reading{reader, level, state_, report_};
        ReadByVersion(reading, way);
        return level;
    }

    /// Reads the file in the first way that can be gone. Where none can, the failure and the
    /// messages are those of the first one.
    LevelData Read(const Way& way, const Way& other) const
    {
        DeferredReports reports(report_);
        try {
            LevelData level = Read(way);
            reports.Tell();
            return level;
        } catch (const ReadFailure& failure) {
            reports.End();
            if (!reports.WasTold())
                if (auto level = TryOther(other, failure))
                    return std::move(*level);
            state_.LevelVersion = way.Version;
            reports.Tell();
            throw;
        } catch (const std::exception&) {
            reports.Tell();
            throw;
        }
    }

private:
    std::optional<LevelData> TryOther(const Way& way, const ReadFailure& failure) const
    {
        DeferredReports reports(report_);
        try {
            LevelData level = Read(way);
            reports.End();
            report_.LogLine(std::string("-Can't be read as its name tells: ") + failure.what());
            report_.LogLine(TextOf(way));
            reports.Tell();
            return level;
        } catch (const ReadFailure&) {
            return std::nullopt;
        } catch (const ProgramEnd&) { // its message is not told
            return std::nullopt;
        }
    }

    static std::string TextOf(const Way& way)
    {
        if (!way.HasOtherPalette)
            return "-LevelVersion:" + DigitsOf(way.Version);
        return std::string("-Palette where ") + (way.Version == kTR1 ? ".TUB" : ".PHD") +
               " files have it";
    }

    std::shared_ptr<const FileBytes> file_;
    TrMainState& state_;
    Reporter& report_;
};

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
        report.LogLine("-LevelVersion:" + DigitsOf(version));
        const LevelFile level(file, state, report);
        const Way way{version};
        const auto other = OtherWay(word, way);
        return other ? level.Read(way, *other) : level.Read(way);
    } catch (const ReadFailure& failure) {
        report.Stop("ReadTR -> Error reading level", kErrorTitle, failure.what());
    }
}

} // namespace morlik
