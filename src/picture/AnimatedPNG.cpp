#include "base/OutputFile.h"
#include "picture/MovingFile.h"
#include "picture/PNG.h"

#include <algorithm>
#include <optional>
#include <utility>

#ifdef MORLIK_PNG
#include <zlib.h>
#endif

namespace morlik
{

#ifdef MORLIK_PNG

namespace
{

using Bytes = std::vector<std::byte>;

constexpr std::size_t kSignatureBytes = 8;
constexpr std::size_t kNameBytes = 4;
constexpr std::size_t kNumberBytes = 4;
constexpr std::size_t kFrameBytes = kSignatureBytes + kNumberBytes; ///< size, name, CRC of a chunk

void PutNumber(Bytes& bytes, std::uint32_t value, std::size_t size = kNumberBytes)
{
    for (std::size_t i = size; i-- > 0;)
        bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
}

std::size_t NumberAt(std::span<const std::byte> bytes, std::size_t at)
{
    std::size_t value = 0;
    for (std::size_t i = 0; i < kNumberBytes; ++i)
        value = value << 8U | std::to_integer<std::size_t>(bytes[at + i]);
    return value;
}

/// What of a picture differs from the one before it, at least one pixel, as a file needs one.
PictureArea ChangeBetween(const Picture& before, const Picture& picture)
{
    PictureArea area{.X = picture.Width, .Y = picture.Height, .Width = 0, .Height = 0};
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    for (std::int32_t y = 0; y < picture.Height; ++y) {
        const auto row = [y](const Picture& of) {
            return std::span(of.Pixels).subspan(of.At(0, y), static_cast<std::size_t>(of.Width));
        };
        const auto old = row(before);
        const auto now = row(picture);
        const auto first = std::mismatch(old.begin(), old.end(), now.begin()).first;
        if (first == old.end())
            continue;
        const auto last = std::mismatch(old.rbegin(), old.rend(), now.rbegin()).first;
        area.X = std::min(area.X, static_cast<std::int32_t>(first - old.begin()));
        right = std::max(right, static_cast<std::int32_t>(old.rend() - last));
        area.Y = std::min(area.Y, y);
        bottom = y + 1;
    }
    if (bottom == 0)
        return {.X = 0, .Y = 0, .Width = 1, .Height = 1};
    area.Width = right - area.X;
    area.Height = bottom - area.Y;
    return area;
}

class AnimatedPNG : public MovingFile
{
public:
    AnimatedPNG(const std::string& path, std::size_t count) : file_(path), count_(count) {}

    void Add(const Picture& picture) override
    {
        const bool isFirst = before_.Pixels.empty();
        const PictureArea area =
            isFirst ? PictureArea{.X = 0, .Y = 0, .Width = picture.Width, .Height = picture.Height}
                    : ChangeBetween(before_, picture);
        const Bytes whole = QuickPNG(picture, area);
        if (isFirst)
            file_.File().PutBytes(std::span(whole).first(kSignatureBytes));
        bool isBegun = false;
        for (std::size_t at = kSignatureBytes; at < whole.size();) {
            const std::size_t size = NumberAt(whole, at);
            const auto chunk = std::span(whole).subspan(at, size + kFrameBytes);
            at += chunk.size();
            const auto name = chunk.subspan(kNumberBytes, kNameBytes);
            const bool isData = std::ranges::equal(name, std::as_bytes(std::span("IDAT", 4)));
            if (isData && !std::exchange(isBegun, true))
                Announce(area, isFirst);
            if (isData && !isFirst)
                PutData(chunk.subspan(kNumberBytes + kNameBytes, size));
            else if (isData || (isFirst && at < whole.size()))
                file_.File().PutBytes(chunk);
            else if (at == whole.size())
                end_.assign(chunk.begin(), chunk.end());
        }
        before_ = picture;
    }

    void TakePlace() override
    {
        file_.File().PutBytes(end_);
        file_.TakePlace();
    }

private:
    /// What stands before the data of a picture.
    void Announce(const PictureArea& area, bool isFirst)
    {
        if (count_ == 1)
            return;
        Bytes bytes;
        if (isFirst) {
            PutNumber(bytes, static_cast<std::uint32_t>(count_));
            PutNumber(bytes, 0);
            PutChunk("acTL", bytes);
        }
        bytes.clear();
        PutNumber(bytes, number_++);
        for (const std::int32_t field : {area.Width, area.Height, area.X, area.Y})
            PutNumber(bytes, static_cast<std::uint32_t>(field));
        PutNumber(bytes, 1, 2);
        PutNumber(bytes, kPicturesPerSecond, 2);
        PutNumber(bytes, 0, 1); // the picture stays
        PutNumber(bytes, 0, 1); // and the next one takes its place, clear pixels too
        PutChunk("fcTL", bytes);
    }

    void PutData(std::span<const std::byte> data)
    {
        Bytes bytes;
        PutNumber(bytes, number_++);
        bytes.insert(bytes.end(), data.begin(), data.end());
        PutChunk("fdAT", bytes);
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
    Picture before_;
    Bytes end_; ///< the last chunk
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
