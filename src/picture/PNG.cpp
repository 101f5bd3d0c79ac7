#include "picture/PNG.h"

#include "base/OutputFile.h"
#include "picture/TGA_Mod.h"

#ifdef MORLIK_PNG
#include <png.h>
#endif

namespace morlik
{

#ifdef MORLIK_PNG

namespace
{

/// A PNG file of rows, the first of them where `stride` bytes are counted from; no bytes where
/// there are no rows.
std::vector<std::byte> EncodePNG(std::int32_t width, std::int32_t height, png_uint_32 format,
                                 const void* rows, std::int32_t stride)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = format;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<std::byte> file(size);
    if (height == 0 ||
        png_image_write_to_memory(&image, file.data(), &size, 0, rows, stride, nullptr) == 0)
        return {};
    file.resize(size);
    return file;
}

} // namespace

bool HasPNG()
{
    return true;
}

std::string PNGLibrary()
{
    return std::string("libpng ") + png_get_libpng_ver(nullptr);
}

bool SavePNG(const std::string& fileName, const LevelData& level, Reporter& report)
{
    if (!SheetFits(level, report))
        return false;
    // The rows come as in a TGA file: B, G, R, and the lowest first.
    const auto rows = SheetRows(level, report.TheHost());
    const auto file = EncodePNG(kTileSide, static_cast<std::int32_t>(rows.size() / kRowBytes),
                                PNG_FORMAT_BGR, rows.data(), -kRowBytes);
    if (file.empty()) {
        report.Message("There is nothing to show in a PNG file");
        return false;
    }
    WriteWholeFile(fileName, file);
    return true;
}

std::vector<std::byte> EncodePNG(const Picture& picture)
{
    return EncodePNG(picture.Width, picture.Height, PNG_FORMAT_RGBA, picture.Pixels.data(), 0);
}

void WritePNG(const std::string& fileName, const Picture& picture)
{
    WriteWholeFile(fileName, EncodePNG(picture));
}

#else

namespace
{

constexpr const char* kNoPNG = "This build of the program can't write PNG files";

} // namespace

bool HasPNG()
{
    return false;
}

std::string PNGLibrary()
{
    return {};
}

bool SavePNG(const std::string& /*fileName*/, const LevelData& /*level*/, Reporter& report)
{
    report.Message(kNoPNG);
    return false;
}

std::vector<std::byte> EncodePNG(const Picture& /*picture*/)
{
    return {};
}

void WritePNG(const std::string& fileName, const Picture& /*picture*/)
{
    throw FileFailure("write", fileName, kNoPNG);
}

#endif

} // namespace morlik
