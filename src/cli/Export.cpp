// morlik-cli sheet and sounds: parts of a level for other programs.

#include "base/Files.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/MainSFX.h"
#include "cli/Plan.h"
#include "cli/QuietHost.h"
#include "output/TGA_Mod.h"
#include "shell/Sounds.h"

#ifdef MORLIK_PNG
#include <png.h>
#endif

namespace morlik::cli
{

namespace
{

#ifdef MORLIK_PNG

/// The sheet as a PNG file. Its rows come as in a TGA file: B, G, R, and the lowest first.
bool SavePNG(const std::string& output, Session& session)
{
    CountRoomTiles(session.Level);
    if (!SheetFits(session.Level, session.Report))
        return false;
    constexpr png_uint_32 kWidth = 256;
    constexpr png_int_32 kRowBytes = 3 * kWidth;
    const auto rows = SheetRows(session.Level, session.State, session.Report.TheHost());
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = kWidth;
    image.height = static_cast<png_uint_32>(rows.size() / kRowBytes);
    image.format = PNG_FORMAT_BGR;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<std::byte> file(size);
    if (image.height == 0 || png_image_write_to_memory(&image, file.data(), &size, 0, rows.data(),
                                                       -kRowBytes, nullptr) == 0) {
        session.Report.Message("There is nothing to show in a PNG file");
        return false;
    }
    WriteWholeFile(output, std::span(file).first(size));
    return true;
}

#endif

} // namespace

int SaveSheet(const std::string& level, const std::string& output, const Streams& streams)
{
    const bool png = EndsWithNoCase(output, ".png");
    if (!png && !EndsWithNoCase(output, ".tga")) {
        streams.Errors << "The sheet must end in .tga or .png\n";
        return kWrongUse;
    }
#ifndef MORLIK_PNG
    if (png) {
        streams.Errors << "This build of the program can't write PNG files\n";
        return kWrongUse;
    }
#endif
    if (IsSameFile(level, output)) {
        streams.Errors << "The sheet would replace the level\n";
        return kWrongUse;
    }
    return RunQuietly(streams, [&](Session& session) {
        LoadLevel(session, level);
#ifdef MORLIK_PNG
        if (png)
            return SavePNG(output, session);
#endif
        return SaveTGA(output, session.Level, session.State, session.Report);
    });
}

int SaveSounds(const std::string& file, const std::string& folder, const Streams& streams)
{
    return RunQuietly(streams, [&](Session& session) {
        const auto base = FromPath(ToPath(folder) / ToPath(file).stem());
        if (IsMainSFX(file)) {
            if (!LoadMainSFX(session, file))
                return false;
        } else {
            LoadLevel(session, file);
            if (session.Level.NumSamples == 0) {
                session.Report.Message("The sounds of this game are in its main.sfx");
                return false;
            }
        }
        MakeFolder(ToPath(folder));
        if (IsMainSFX(file))
            WriteMainSFXSounds(base, session.MainSFX);
        else
            WriteLevelSounds(base, session.Level, session.Report);
        return true;
    });
}

} // namespace morlik::cli
