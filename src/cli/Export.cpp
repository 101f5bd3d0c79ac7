// morlik-cli sheet and sounds: parts of a level for other programs.

#include "audio/WaveInfo.h"
#include "base/FileIdentity.h"
#include "base/Files.h"
#include "base/Folders.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/MainSFX.h"
#include "cli/QuietHost.h"
#include "picture/PNG.h"
#include "picture/TGA_Mod.h"
#include "shell/Sounds.h"

namespace morlik::cli
{

namespace
{

std::string TextOfSound(std::span<const std::byte> wave)
{
    try {
        return Describe(ReadWaveInfo(wave));
    } catch (const ReadFailure&) {
        return "unknown, " + std::to_string(wave.size()) + " bytes";
    }
}

} // namespace

int SaveSheet(const std::string& level, const std::string& output, const Streams& streams)
{
    const bool png = EndsWithNoCase(output, ".png");
    if (!png && !EndsWithNoCase(output, ".tga")) {
        streams.Errors << "The sheet must end in .tga or .png\n";
        return kWrongUse;
    }
    if (png && !HasPNG()) {
        streams.Errors << "This build of the program can't write PNG files\n";
        return kWrongUse;
    }
    try {
        GuardInputs({{level}}, {{output}});
    } catch (const FileFailure& failure) {
        streams.Errors << failure.what() << '\n';
        return kWrongUse;
    }
    return RunQuietly(streams, [&](Session& session) {
        LoadLevel(session, level);
        MakeFolder(ToPath(output).parent_path());
        return png ? SavePNG(output, session.Level, session.Report)
                   : SaveTGA(output, session.Level, session.Report);
    });
}

int SaveSounds(const std::string& file, const std::string& folder, const Streams& streams)
{
    return RunQuietly(streams, [&](Session& session) {
        const auto base = FromPath(ToPath(folder) / ToPath(file).stem());
        if (MayBeMainSFX(file)) {
            if (!LoadMainSFX(session, file))
                return false;
        } else {
            LoadLevel(session, file);
            if (session.Level.Samples.empty()) {
                session.Report.Message(HasMainSFX(session.Level)
                                           ? "The sounds of this game are in its main.sfx"
                                           : "The level holds no sounds");
                return false;
            }
        }
        const WaveFiles files = MayBeMainSFX(file) ? MainSFXSoundFiles(base, session.MainSFX)
                                                   : LevelSoundFiles(base, session.Level);
        GuardInputs({{file}}, PathsOf(files));
        MakeFolder(ToPath(folder));
        if (!(MayBeMainSFX(file) ? WriteMainSFXSounds(base, session.MainSFX, session.Report)
                                 : WriteLevelSounds(base, session.Level, session.Report)))
            return false;
        for (const WaveFile& wave : files)
            streams.Out << Printable(wave.Path) << ": " << TextOfSound(wave.Bytes) << '\n';
        return true;
    });
}

} // namespace morlik::cli
