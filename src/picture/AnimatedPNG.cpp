#include "base/OutputFile.h"
#include "picture/MovingFile.h"

#include <array>
#include <new>
#include <span>
#include <string_view>

#ifdef MORLIK_PNG
#include <zlib.h>
#ifdef MORLIK_LIBDEFLATE
#include <libdeflate.h>
#endif
#endif

namespace morlik
{

#ifdef MORLIK_PNG

namespace
{

using Bytes = std::vector<std::byte>;

constexpr std::array<std::uint8_t, 8> kSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr std::size_t kNumberBytes = 4;

void PutNumber(Bytes& bytes, std::uint32_t value, std::size_t size = kNumberBytes)
{
    for (std::size_t i = size; i-- > 0;)
        bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
}

/// Makes zlib streams in the least time, for files of many pictures.
class Deflater
{
public:
    /// Puts the stream of `data` behind `bytes`.
    void Put(Bytes& bytes, std::span<const std::byte> data);

private:
#ifdef MORLIK_LIBDEFLATE
    std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor_{
        libdeflate_alloc_compressor(1), libdeflate_free_compressor};
#endif
};

void Deflater::Put(Bytes& bytes, std::span<const std::byte> data)
{
    const std::size_t before = bytes.size();
#ifdef MORLIK_LIBDEFLATE
    if (compressor_ == nullptr)
        throw std::bad_alloc();
    bytes.resize(before + libdeflate_zlib_compress_bound(compressor_.get(), data.size()));
    const std::size_t size = libdeflate_zlib_compress(compressor_.get(), data.data(), data.size(),
                                                      &bytes[before], bytes.size() - before);
#else
    auto size = compressBound(static_cast<uLong>(data.size()));
    bytes.resize(before + size);
    if (compress2(reinterpret_cast<Bytef*>(&bytes[before]), &size,
                  reinterpret_cast<const Bytef*>(data.data()), static_cast<uLong>(data.size()),
                  Z_BEST_SPEED) != Z_OK)
        throw std::bad_alloc();
#endif
    bytes.resize(before + size);
}

class AnimatedPNG : public MovingFile
{
public:
    AnimatedPNG(const std::string& path, std::size_t count) : file_(path), count_(count) {}

    void Add(const Picture& picture) override
    {
        const bool isFirst = Last().Pixels.empty();
        const PictureArea area = TakeChange(picture);
        if (isFirst)
            PutHead(picture);
        if (count_ != 1)
            Announce(area);
        Bytes data;
        if (!isFirst)
            PutNumber(data, number_++);
        deflater_.Put(data, RowsOf(picture, area));
        TakeBytes(data.size());
        PutChunk(isFirst ? "IDAT" : "fdAT", data);
    }

    void TakePlace() override
    {
        PutChunk("IEND", {});
        file_.TakePlace();
    }

private:
    /// The rows of an area, each behind a byte that tells that it isn't filtered.
    static Bytes RowsOf(const Picture& picture, const PictureArea& area)
    {
        Bytes rows;
        rows.reserve(static_cast<std::size_t>(area.Height) *
                     (1 + static_cast<std::size_t>(area.Width) * sizeof(Colour)));
        for (std::int32_t y = area.Y; y < area.Y + area.Height; ++y) {
            const auto row = std::as_bytes(
                std::span(picture.Pixels)
                    .subspan(picture.At(area.X, y), static_cast<std::size_t>(area.Width)));
            rows.push_back(std::byte{0});
            rows.insert(rows.end(), row.begin(), row.end());
        }
        return rows;
    }

    void PutHead(const Picture& picture)
    {
        constexpr std::uint32_t kBits = 8;
        constexpr std::uint32_t kColoursAndAlpha = 6;
        file_.File().PutBytes(std::as_bytes(std::span(kSignature)));
        Bytes head;
        PutNumber(head, static_cast<std::uint32_t>(picture.Width));
        PutNumber(head, static_cast<std::uint32_t>(picture.Height));
        for (const std::uint32_t field : {kBits, kColoursAndAlpha, 0U, 0U, 0U})
            PutNumber(head, field, 1);
        PutChunk("IHDR", head);
        if (count_ == 1)
            return;
        Bytes control;
        PutNumber(control, static_cast<std::uint32_t>(count_));
        PutNumber(control, 0);
        PutChunk("acTL", control);
    }

    /// What stands before the data of a picture.
    void Announce(const PictureArea& area)
    {
        Bytes bytes;
        PutNumber(bytes, number_++);
        for (const std::int32_t field : {area.Width, area.Height, area.X, area.Y})
            PutNumber(bytes, static_cast<std::uint32_t>(field));
        PutNumber(bytes, 1, 2);
        PutNumber(bytes, kPicturesPerSecond, 2);
        PutNumber(bytes, 0, 1); // the picture stays
        PutNumber(bytes, 0, 1); // and the next one takes its place, clear pixels too
        PutChunk("fcTL", bytes);
    }

    void PutChunk(std::string_view name, std::span<const std::byte> data)
    {
        Bytes bytes;
        PutNumber(bytes, static_cast<std::uint32_t>(data.size()));
        const auto nameBytes = std::as_bytes(std::span(name));
        bytes.insert(bytes.end(), nameBytes.begin(), nameBytes.end());
        bytes.insert(bytes.end(), data.begin(), data.end());
        const auto crc = crc32(0, reinterpret_cast<const Bytef*>(bytes.data() + kNumberBytes),
                               static_cast<uInt>(bytes.size() - kNumberBytes));
        PutNumber(bytes, static_cast<std::uint32_t>(crc));
        file_.File().PutBytes(bytes);
    }

    NewFile file_;
    std::size_t count_;
    std::uint32_t number_ = 0; ///< of the next fcTL or fdAT chunk
    Deflater deflater_;
};

} // namespace

std::unique_ptr<MovingFile> NewAnimatedPNG(const std::string& path, std::size_t count)
{
    return std::make_unique<AnimatedPNG>(path, count);
}

#else

std::unique_ptr<MovingFile> NewAnimatedPNG(const std::string& path, std::size_t /*count*/)
{
    throw FileFailure("write", path, "This build of the program can't write PNG files");
}

#endif

} // namespace morlik
