#include "fuzz/LevelTables.h"

#include "fuzz/LevelInput.h"
#include "samples/LevelWriter.h"

#include <cstring>

namespace morlik::fuzz
{

namespace
{

/// Walks over a file section by section. Behind a section that runs past the end nothing more is
/// found.
class Walk
{
public:
    explicit Walk(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    void Skip(std::size_t count)
    {
        if (count > bytes_.size() - at_)
            lost_ = true;
        else if (!lost_)
            at_ += count;
    }

    template <class CountType>
    std::int64_t Count()
    {
        CountType count{};
        const auto from = at_;
        Skip(sizeof count);
        if (!lost_)
            std::memcpy(&count, bytes_.data() + from, sizeof count);
        return count;
    }

    /// A count and its records.
    template <class CountType>
    std::size_t Table(std::size_t recordBytes)
    {
        const auto from = at_;
        const auto count = Count<CountType>();
        if (lost_ || count < 0 ||
            static_cast<std::uint64_t>(count) > (bytes_.size() - at_) / recordBytes) {
            lost_ = true;
            return 0;
        }
        const auto records = static_cast<std::size_t>(count);
        Tables.push_back({from, sizeof(CountType), recordBytes, records, at_});
        Skip(records * recordBytes);
        return records;
    }
    void Short(std::size_t recordBytes) { Table<std::int16_t>(recordBytes); }
    void Long(std::size_t recordBytes) { Table<std::int32_t>(recordBytes); }

    bool IsLost() const { return lost_; }

    std::vector<CountedTable> Tables;

private:
    std::span<const std::uint8_t> bytes_;
    std::size_t at_ = 0;
    bool lost_ = false;
};

void WalkRoom(Walk& walk, const RoomLayout& layout)
{
    walk.Skip(kRoomHeadBytes);
    walk.Long(2); // geometry
    walk.Short(kPortalBytes);
    const auto zSectors = walk.Count<std::uint16_t>();
    const auto xSectors = walk.Count<std::uint16_t>();
    walk.Skip(static_cast<std::size_t>(zSectors * xSectors) * kSectorBytes);
    walk.Skip(layout.Ambient);
    walk.Short(layout.Light);
    walk.Short(layout.Static);
    walk.Skip(layout.Tail);
}

void WalkRooms(Walk& walk, VersionCode game)
{
    const auto count = walk.Count<std::int16_t>();
    if (game == kTR5)
        walk.Skip(2);
    for (std::int64_t i = 0; i < count && !walk.IsLost(); ++i) {
        if (game == kTR5) {
            walk.Skip(4);
            walk.Long(1);
        } else
            WalkRoom(walk, samples::RoomLayoutOf(game));
    }
}

/// The sections behind the rooms.
void WalkSections(Walk& walk, VersionCode game)
{
    std::size_t boxes = 0;
    for (const auto& [name, countBytes, recordBytes] : samples::SectionsOf(game)) {
        std::size_t records = name == "Zones" ? boxes : 1;
        if (countBytes == 0)
            walk.Skip(records * recordBytes);
        else
            records = countBytes == 2 ? walk.Table<std::int16_t>(recordBytes)
                                      : walk.Table<std::int32_t>(recordBytes);
        if (name == "Boxes")
            boxes = records;
    }
}

void WalkStreams(Walk& walk, VersionCode game)
{
    walk.Skip(10); // version, tile counts
    const int streams = game == kTR4 ? 4 : 3;
    for (int i = 0; i < streams; ++i) {
        walk.Skip(4);
        walk.Long(1);
    }
}

} // namespace

std::vector<CountedTable> FindTables(std::span<const std::uint8_t> bytes, VersionCode game)
{
    Walk walk(bytes);
    if (game == kTR5) {
        WalkStreams(walk, game);
        // Lara, weather, sizes of the level data
        walk.Skip(2 * sizeof(std::int16_t) + samples::kHeadBytesTR5 + 2 * sizeof(std::int32_t));
    } else if (IsOlderGame(game)) {
        walk.Skip(TileCountAt(game) + sizeof(std::int32_t));
    }
    walk.Skip(4); // unused word
    WalkRooms(walk, game);
    WalkSections(walk, game);
    return std::move(walk.Tables);
}

std::vector<CountedTable> FindStreams(std::span<const std::uint8_t> bytes, VersionCode game)
{
    Walk walk(bytes);
    WalkStreams(walk, game);
    return std::move(walk.Tables);
}

} // namespace morlik::fuzz
