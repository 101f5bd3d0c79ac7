#include "level/Compressed.h"

#include "base/Narrow.h"
#include "level/ConvertFractional.h"
#include "level/ConvertTR5TextInfo.h"
#include "level/TextureForm.h"

#include <algorithm>
#include <memory>
#include <zlib.h>

#ifdef MORLIK_LIBDEFLATE
#include <libdeflate.h>
#endif

namespace morlik
{

namespace
{

/// Inflated sizes up to here are taken as told.
constexpr std::int64_t kTrustedBytes = std::int64_t{64} << 20;
/// The most that a zlib stream can grow.
constexpr std::int64_t kMostGrowth = 1032;
/// No level has a block of this size: textures reach 128 tiles, 32 MiB, at the most.
constexpr std::int64_t kMostBytes = std::int64_t{96} << 20;

constexpr std::int64_t kPixelBytes32 = 4;

std::vector<ObjectTextureTR45> ReadRecords(std::span<const std::byte> bytes,
                                           const TextureRecordLayout& layout)
{
    std::vector<ObjectTextureTR45> textures(bytes.size() / layout.Bytes());
    ByteReader records(bytes);
    for (ObjectTextureTR45& texture : textures) {
        TextureHeadFields::Read(records, texture);
        records.Skip(layout.Gap);
        TextureSizeFields::Read(records, texture);
        records.Skip(layout.Tail);
    }
    return textures;
}

/// Inflates an intact stream into a target with room for all of it, about twice as fast as zlib,
/// and gives the size. All others are left to zlib, for what it makes of damaged ones is what the
/// levels of the users were always read as.
bool InflateFast([[maybe_unused]] std::span<const std::byte> stream,
                 [[maybe_unused]] std::span<std::byte> target, [[maybe_unused]] std::size_t& size)
{
#ifdef MORLIK_LIBDEFLATE
    using Inflater = std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor*)>;
    const Inflater inflater(libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    return inflater != nullptr &&
           libdeflate_zlib_decompress(inflater.get(), stream.data(), stream.size(), target.data(),
                                      target.size(), &size) == LIBDEFLATE_SUCCESS;
#else
    return false;
#endif
}

/// A block that nothing needs: inflated size, compressed size, stream.
void SkipBlock(ByteReader& reader)
{
    reader.Skip(4);
    SkipTable(reader, "further tiles", 1);
}

} // namespace

std::span<const std::byte> TakeBlock(ByteReader& reader, BlockSizes& sizes)
{
    sizes.Inflated = reader.Read<std::int32_t>();
    sizes.Compressed = reader.Read<std::int32_t>();
    const bool tooLong =
        sizes.Inflated > kTrustedBytes && sizes.Inflated / kMostGrowth > sizes.Compressed;
    if (sizes.Inflated <= 0 || sizes.Inflated > kMostBytes || tooLong)
        reader.Fail("an inflated size of " + std::to_string(sizes.Inflated));
    return reader.TakeTable(sizes.Compressed, 1);
}

void Inflate(std::span<const std::byte> stream, std::span<std::byte> target, PhaseTimes& times)
{
    const PhaseScope inflating(times, Phase::Inflate);
    std::size_t size = 0;
    if (!InflateFast(stream, target, size)) {
        auto given = static_cast<uLongf>(target.size());
        uncompress(reinterpret_cast<Bytef*>(target.data()), &given,
                   reinterpret_cast<const Bytef*>(stream.data()),
                   static_cast<uLong>(stream.size()));
        size = given;
    }
    std::fill(target.begin() + static_cast<std::ptrdiff_t>(size), target.end(), std::byte{0});
}

void ReadTileBlocks(LevelReading& reading)
{
    ByteReader& reader = reading.Reader;
    LevelData& level = reading.Level;
    reader.Section("tiles");
    level.NumRoomTiles = reader.Read<std::int16_t>();
    level.NumObjectTiles = reader.Read<std::int16_t>();
    level.NumBumpTiles = reader.Read<std::int16_t>();
    BlockSizes sizes{};
    const auto stream = TakeBlock(reader, sizes);
    level.TileBytes = narrow<std::int32_t>(std::int64_t{sizes.Inflated} * 3 / kPixelBytes32);
    const auto pixels = (sizes.Inflated + kPixelBytes32 - 1) / kPixelBytes32;
    const auto tiles =
        std::make_shared<UninitialisedVector<std::uint32_t>>(static_cast<std::size_t>(pixels));
    tiles->back() = 0; // it may be there in part only
    Inflate(
        stream,
        std::as_writable_bytes(std::span(*tiles)).first(static_cast<std::size_t>(sizes.Inflated)),
        reading.Report.Times);
    level.Tiles32 = *tiles;
    level.InflatedTiles = tiles;
    SkipBlock(reader);
    SkipBlock(reader);
}

void SkipScenery(ByteReader& reader)
{
    SkipTable(reader, "sprite textures", 16);
    SkipTable(reader, "sprite sequences", 8);
    SkipTable(reader, "cameras", 16);
    SkipTable(reader, "flyby cameras", 40);
    SkipTable(reader, "sound sources", 16);
    SkipBoxes(reader, 8, 20);
    SkipTable(reader, "animated textures", 2);
}

void ReadObjectTexturesTR45(LevelReading& reading, std::span<const TextureRecordLayout> layouts)
{
    ByteReader& reader = reading.Reader;
    reader.Section("object textures");
    reading.Level.NumTextInfo = ReadCount(reader, CountRule::Positive);
    const auto records = reader.TakeTable(reading.Level.NumTextInfo, layouts[0].Bytes());
    auto& textures = reading.State.ObjectTexturesTR45;
    textures = ReadRecords(records, layouts[0]);
    for (const TextureRecordLayout& other : layouts.subspan(1)) {
        auto moved = ReadRecords(records, other);
        if (!HasClassicSizes(textures) && (HasClassicSizes(moved) || HasFloatSizes(moved)))
            textures = std::move(moved);
    }
    TakeForm(FormOf(textures), reading.Level, reading.Report);
    if (reading.Level.HasFractions)
        ConvertFractional(reading.Level, reading.State, reading.Report);
    else
        ConvertTR5TextInfo(reading.Level, reading.State, reading.Report);
}

void SkipItemsTR45(ByteReader& reader)
{
    SkipTable(reader, "items", 24);
    SkipTable(reader, "AI objects", 24);
}

std::string InflateLibraries()
{
    std::string names = std::string("zlib ") + zlibVersion();
#ifdef MORLIK_LIBDEFLATE
    names += std::string(", libdeflate ") + LIBDEFLATE_VERSION_STRING;
#endif
    return names;
}

} // namespace morlik
