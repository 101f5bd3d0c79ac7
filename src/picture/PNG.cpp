#include "picture/PNG.h"

#include "base/OutputFile.h"
#include "picture/TGA_Mod.h"

#ifdef MORLIK_PNG
#include <png.h>
#endif

namespace morlik
{

#ifdef MORLIK_PNG

bool HasPNG()
{
    return true;
}

bool SavePNG(const std::string& fileName, const LevelData& level, Reporter& report)
{
    if (!SheetFits(level, report))
        return false;
    // The rows come as in a TGA file: B, G, R, and the lowest first.
    const auto rows = SheetRows(level, report.TheHost());
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = kTileSide;
    image.height = static_cast<png_uint_32>(rows.size() / kRowBytes);
    image.format = PNG_FORMAT_BGR;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<std::byte> file(size);
    if (image.height == 0 || png_image_write_to_memory(&image, file.data(), &size, 0, rows.data(),
                                                       -kRowBytes, nullptr) == 0) {
        report.Message("There is nothing to show in a PNG file");
        return false;
    }
    WriteWholeFile(fileName, std::span(file).first(size));
    return true;
}

#else

bool HasPNG()
{
    return false;
}

bool SavePNG(const std::string& /*fileName*/, const LevelData& /*level*/, Reporter& report)
{
    report.Message("This build of the program can't write PNG files");
    return false;
}

#endif

} // namespace morlik
