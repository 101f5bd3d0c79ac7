#include "set/Tiles.h"

#include "base/Narrow.h"

#include <cstring>
#include <span>
#include <vector>

namespace morlik
{

namespace
{

/// Rows as they stand in a file.
class FileRows : public TileRows
{
public:
    FileRows(std::span<const std::byte> bytes, std::shared_ptr<const void> owner)
        : bytes_(bytes), owner_(std::move(owner))
    {
    }

    void CopyRow(std::int64_t row, std::byte* out) const override
    {
        const auto at = narrow<std::size_t>(row) * kRowBytes;
        std::memcpy(out, bytes_.subspan(at, kRowBytes).data(), kRowBytes);
    }

private:
    std::span<const std::byte> bytes_;
    std::shared_ptr<const void> owner_;
};

} // namespace

void WriteTiles(ByteSink& out, const SetTiles& tiles, TileProgress& progress)
{
    progress.Begin();
    out.Put(narrow<std::int32_t>(tiles.NumBytes()));
    // Each step writes a 256th of the rows: as many as there are tiles.
    std::vector<std::byte> part(static_cast<std::size_t>(tiles.Count()) * kRowBytes);
    std::int64_t row = 0;
    for (std::int32_t step = 0; step < TileProgress::kSteps; ++step) {
        progress.Step(step);
        for (std::size_t at = 0; at < part.size(); at += kRowBytes)
            tiles.CopyRow(row++, &part[at]);
        out.PutBytes(part);
    }
    progress.End();
}

SetTiles ReadTiles(ByteReader& reader, std::shared_ptr<const void> owner)
{
    const auto numBytes = reader.Read<std::int32_t>();
    if (numBytes % kTileBytes != 0)
        reader.Fail(std::to_string(numBytes) + " bytes are no whole tiles");
    return {numBytes, std::make_shared<FileRows>(reader.TakeTable(numBytes, 1), std::move(owner))};
}

} // namespace morlik
