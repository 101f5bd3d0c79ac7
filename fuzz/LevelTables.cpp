#include "fuzz/LevelTables.h"

#include <cstring>
#include <optional>

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

/// What differs between the games.
struct LevelForm
{
    std::size_t HeadBytes;
    std::size_t AmbientBytes;
    std::size_t LightBytes;
    std::size_t StaticBytes;
    std::size_t RoomTail;
    std::size_t AnimationBytes;
    std::size_t MoveableBytes;
    std::size_t TextureBytes;
    std::size_t BoxBytes;
    std::size_t ZoneBytes;
    std::size_t ItemBytes;
    std::size_t SoundSlots;
};

constexpr std::size_t kPalettes = 768 + 1024;
constexpr std::size_t kSlots1 = kSoundMapSlotsTR1;
constexpr std::size_t kSlots2 = kSoundMapSlotsTR2;
constexpr std::size_t kSlots5 = kSoundMapSlots;

const LevelForm& FormOf(VersionCode game)
{
    static constexpr LevelForm kFirst{12, 2, 18, 18, 4, 32, 18, 20, 20, 12, 22, kSlots1};
    static constexpr LevelForm kSecond{12 + kPalettes, 6, 24, 20, 4, 32, 18, 20, 8, 20, 24,
                                       kSlots2};
    static constexpr LevelForm kThird{12 + kPalettes, 4, 24, 20, 7, 32, 18, 20, 8, 20, 24, kSlots2};
    static constexpr LevelForm kFourth{4, 4, 46, 20, 7, 40, 18, 38, 8, 20, 24, kSlots2};
    static constexpr LevelForm kFifth{0, 0, 0, 0, 0, 40, 20, 40, 8, 20, 24, kSlots5};
    switch (game) {
    case kTR2:
        return kSecond;
    case kTR3:
        return kThird;
    case kTR4:
        return kFourth;
    case kTR5:
        return kFifth;
    default:
        return kFirst;
    }
}

bool IsOlder(VersionCode game)
{
    return game != kTR4 && game != kTR5;
}

void WalkRoom(Walk& walk, const LevelForm& form)
{
    walk.Skip(16);
    walk.Long(2);   // geometry
    walk.Short(32); // portals
    const auto zSectors = walk.Count<std::uint16_t>();
    const auto xSectors = walk.Count<std::uint16_t>();
    walk.Skip(static_cast<std::size_t>(zSectors * xSectors) * 8);
    walk.Skip(form.AmbientBytes);
    walk.Short(form.LightBytes);
    walk.Short(form.StaticBytes);
    walk.Skip(form.RoomTail);
}

void WalkRooms(Walk& walk, const LevelForm& form, VersionCode game)
{
    const auto count = walk.Count<std::int16_t>();
    if (game == kTR5)
        walk.Skip(2);
    for (std::int64_t i = 0; i < count && !walk.IsLost(); ++i) {
        if (game == kTR5) {
            walk.Skip(4);
            walk.Long(1);
        } else
            WalkRoom(walk, form);
    }
    walk.Long(2); // floor data
}

void WalkModels(Walk& walk, const LevelForm& form)
{
    walk.Long(2); // mesh data
    walk.Long(4); // mesh pointers
    walk.Long(form.AnimationBytes);
    walk.Long(6); // state changes
    walk.Long(8); // dispatches
    walk.Long(2); // commands
    walk.Long(4); // mesh trees
    walk.Long(2); // frames
    walk.Long(form.MoveableBytes);
    walk.Long(32); // static meshes
}

/// Sprites to animated textures.
void WalkScenery(Walk& walk, const LevelForm& form, VersionCode game)
{
    walk.Long(16); // sprite textures
    walk.Long(8);  // sprite sequences
    if (game == kTR1Gold)
        walk.Skip(768);
    walk.Long(16); // cameras
    if (!IsOlder(game))
        walk.Long(40); // fly-by cameras
    walk.Long(16);     // sound sources
    const auto boxes = walk.Table<std::int32_t>(form.BoxBytes);
    walk.Long(2); // overlaps
    walk.Skip(boxes * form.ZoneBytes);
    walk.Long(2); // animated textures
}

void WalkScene(Walk& walk, const LevelForm& form, VersionCode game)
{
    walk.Long(form.ItemBytes);
    if (IsOlder(game)) {
        walk.Skip(8192 + (game == kTR1 ? 768 : 0));
        walk.Short(16); // cinematic frames
    } else
        walk.Long(24); // AI objects
    walk.Short(1);     // demo data
}

void WalkSounds(Walk& walk, const LevelForm& form, VersionCode game)
{
    walk.Skip(2 * form.SoundSlots);
    walk.Long(8); // sound details
    if (game == kTR1 || game == kTR1Gold)
        walk.Long(1); // sample data
    walk.Long(4);     // sample indices
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
    const LevelForm& form = FormOf(game);
    Walk walk(bytes);
    if (game == kTR5) {
        WalkStreams(walk, game);
        walk.Skip(4 + 28 + 8); // lara, weather, sizes of the level data
        walk.Skip(4);
    }
    walk.Skip(form.HeadBytes);
    WalkRooms(walk, form, game);
    WalkModels(walk, form);
    if (!IsOlder(game))
        walk.Skip(game == kTR5 ? 4 : 3); // sprite mark
    else if (game != kTR3)
        walk.Long(form.TextureBytes);
    WalkScenery(walk, form, game);
    if (!IsOlder(game))
        walk.Skip(game == kTR5 ? 5 : 4); // texture mark
    if (!IsOlder(game) || game == kTR3)
        walk.Long(form.TextureBytes);
    WalkScene(walk, form, game);
    WalkSounds(walk, form, game);
    return std::move(walk.Tables);
}

std::vector<CountedTable> FindStreams(std::span<const std::uint8_t> bytes, VersionCode game)
{
    Walk walk(bytes);
    WalkStreams(walk, game);
    return std::move(walk.Tables);
}

} // namespace morlik::fuzz
