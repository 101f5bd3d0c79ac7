#pragma once

#include "base/Bytes.h"
#include "base/Records.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace morlik
{

/// Where the rows of some tiles come from. Pixels of many megabytes are converted or copied only
/// while they are written, or where somebody looks at them.
class TileRows
{
public:
    virtual ~TileRows() = default;

    /// Writes a row as `kRowBytes` bytes: 256 pixels of R, G, B.
    virtual void CopyRow(std::int64_t row, std::byte* out) const = 0;

protected:
    TileRows() = default;
    TileRows(const TileRows&) = default;
    TileRows(TileRows&&) = default;
    TileRows& operator=(const TileRows&) = default;
    TileRows& operator=(TileRows&&) = default;
};

/// The tiles of an object set, one below the other. Magenta (255, 0, 255) is transparent.
/// In a file they are a 32-bit byte count and the rows, with nothing between.
class SetTiles
{
public:
    SetTiles() = default;
    SetTiles(std::int64_t numBytes, std::shared_ptr<const TileRows> rows)
        : numBytes_(numBytes), rows_(std::move(rows))
    {
    }

    /// `kTileBytes` for each tile.
    std::int64_t NumBytes() const { return numBytes_; }
    /// How many tiles.
    std::int64_t Count() const { return numBytes_ / kTileBytes; }
    /// Writes row `row`, 0 to 256 `Count()` - 1, as `kRowBytes` bytes.
    void CopyRow(std::int64_t row, std::byte* out) const { rows_->CopyRow(row, out); }

private:
    std::int64_t numBytes_ = 0;
    std::shared_ptr<const TileRows> rows_;
};

/// Told how the writing of tiles goes on.
class TileProgress
{
public:
    virtual ~TileProgress() = default;
    virtual void Begin() {}
    /// Before each of the `kSteps` parts of the rows is written, numbered from 0.
    virtual void Step(std::int32_t /*step*/) {}
    virtual void End() {}

    static constexpr std::int32_t kSteps = 256;

protected:
    TileProgress() = default;
    TileProgress(const TileProgress&) = default;
    TileProgress(TileProgress&&) = default;
    TileProgress& operator=(const TileProgress&) = default;
    TileProgress& operator=(TileProgress&&) = default;
};

void WriteTiles(ByteSink& out, const SetTiles& tiles, TileProgress& progress);

/// The tiles as views into the bytes of `reader`, which `owner` keeps alive.
SetTiles ReadTiles(ByteReader& reader, std::shared_ptr<const void> owner);

} // namespace morlik
