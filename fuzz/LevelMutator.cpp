#include "fuzz/LevelMutator.h"

#include "fuzz/LevelTables.h"
#include "samples/LevelWriter.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <random>
#include <zlib.h>

/// libFuzzer's own mutations, of bytes that it knows nothing about.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace morlik::fuzz
{

namespace
{

constexpr std::array<std::int64_t, 10> kTroublesome{
    0, 1, -1, 2, 0x7f, 0x7fff, 0x8000, 0xffff, 0x7fffffff, 0x80000000LL};

std::ptrdiff_t Index(std::size_t at)
{
    return static_cast<std::ptrdiff_t>(at);
}

/// One change to a level at hand.
class Change
{
public:
    Change(Bytes& level, unsigned seed) : level_(level), random_(seed) {}

    void ToOneOf(const std::vector<CountedTable>& tables)
    {
        const CountedTable& table = tables[Below(tables.size())];
        switch (Below(table.Records == 0 ? 2 : 6)) {
        case 0:
            SetCount(table, Troublesome(static_cast<std::int64_t>(table.Records)));
            break;
        case 1:
            Grow(table);
            break;
        case 2:
            Shrink(table);
            break;
        default:
            ChangeField(table);
        }
    }

    std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

private:
    /// A value that is often wrong, or next to the one that stands there.
    std::int64_t Troublesome(std::int64_t value)
    {
        switch (Below(4)) {
        case 0:
            return value + 1;
        case 1:
            return value - 1;
        case 2:
            return static_cast<std::int64_t>(Below(0x10000));
        default:
            return kTroublesome[Below(kTroublesome.size())];
        }
    }

    void Put(std::size_t at, std::size_t bytes, std::int64_t value)
    {
        std::memcpy(level_.data() + at, &value, bytes);
    }
    void SetCount(const CountedTable& table, std::int64_t count)
    {
        Put(table.CountAt, table.CountBytes, count);
    }

    std::size_t AnyRecord(const CountedTable& table)
    {
        return table.FirstAt + Below(table.Records) * table.RecordBytes;
    }

    /// One record more, a double of another one.
    void Grow(const CountedTable& table)
    {
        Bytes record(table.RecordBytes);
        if (table.Records > 0)
            std::copy_n(level_.begin() + Index(AnyRecord(table)), table.RecordBytes,
                        record.begin());
        level_.insert(level_.begin() + Index(table.FirstAt), record.begin(), record.end());
        SetCount(table, static_cast<std::int64_t>(table.Records) + 1);
    }

    void Shrink(const CountedTable& table)
    {
        const auto from = level_.begin() + Index(AnyRecord(table));
        level_.erase(from, from + Index(table.RecordBytes));
        SetCount(table, static_cast<std::int64_t>(table.Records) - 1);
    }

    /// A word of a record; records begin at odd places too, and so do fields of some.
    void ChangeField(const CountedTable& table)
    {
        const std::size_t width = std::min<std::size_t>(table.RecordBytes, Below(3) == 0 ? 4 : 2);
        const std::size_t fields = table.RecordBytes / width;
        const std::size_t at = AnyRecord(table) + Below(fields) * width;
        std::int16_t word = 0;
        std::memcpy(&word, level_.data() + at, std::min(width, sizeof word));
        Put(at, width, Troublesome(word));
    }

    Bytes& level_;
    std::minstd_rand random_;
};

/// The bytes as libFuzzer changes them.
Bytes Mangled(Bytes bytes, std::size_t most)
{
    const auto size = bytes.size();
    bytes.resize(std::max(size, most));
    bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
    return bytes;
}

Bytes Inflated(std::span<const std::uint8_t> stream, std::size_t size)
{
    constexpr std::size_t kMost = std::size_t{1} << 20U;
    Bytes bytes(std::min(size, kMost));
    auto length = static_cast<uLongf>(bytes.size());
    uncompress(bytes.data(), &length, stream.data(), static_cast<uLong>(stream.size()));
    bytes.resize(length);
    return bytes;
}

/// The level block of a Tomb Raider IV file changed, and its two sizes with it.
Bytes WithChangedBlock(const Bytes& file, const CountedTable& stream, std::size_t most,
                       unsigned seed)
{
    const std::size_t sizesAt = stream.CountAt - 4;
    std::uint32_t size = 0;
    std::memcpy(&size, file.data() + sizesAt, sizeof size);
    Bytes block =
        Inflated(std::span(file).subspan(stream.FirstAt, stream.Records), std::size_t{size});
    const auto length = block.size();
    block.resize(std::max(most, length));
    block.resize(MutateTables(block.data(), length, block.size(), kTR4, seed));
    const auto deflated = samples::Compress(std::as_bytes(std::span(block)));

    Bytes changed(file.begin(), file.begin() + Index(sizesAt));
    const std::array<std::uint32_t, 2> sizes{static_cast<std::uint32_t>(block.size()),
                                             static_cast<std::uint32_t>(deflated.size())};
    changed.resize(changed.size() + sizeof sizes);
    std::memcpy(changed.data() + sizesAt, &sizes, sizeof sizes);
    for (const std::byte byte : deflated)
        changed.push_back(std::to_integer<std::uint8_t>(byte));
    changed.insert(changed.end(), file.begin() + Index(stream.FirstAt + stream.Records),
                   file.end());
    return changed;
}

std::size_t Store(const Bytes& from, std::uint8_t* data, std::size_t most)
{
    const auto size = std::min(from.size(), most);
    std::copy_n(from.begin(), size, data);
    return size;
}

} // namespace

std::size_t MutateTables(std::uint8_t* data, std::size_t size, std::size_t most, VersionCode game,
                         unsigned seed)
{
    Bytes level(data, data + size);
    Change change(level, seed);
    const auto tables = FindTables(level, game);
    if (tables.empty() || change.Below(4) == 0)
        return LLVMFuzzerMutate(data, size, most);
    change.ToOneOf(tables);
    return Store(level, data, most);
}

std::size_t MutateLevel(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed)
{
    constexpr unsigned kChangesOfStreams = 8; // one in as many hits what stands around the block
    if (size <= kNameBytes || most <= kNameBytes)
        return LLVMFuzzerMutate(data, size, most);
    const VersionCode game = GameOf({data, size});
    std::uint8_t* const file = data + kNameBytes;
    const std::size_t room = most - kNameBytes;
    const Bytes before(file, data + size);
    const auto streams =
        IsOlderGame(game) ? std::vector<CountedTable>{} : FindStreams(before, game);
    const bool around = seed % kChangesOfStreams == 0;
    if (game == kTR4 && streams.size() == 4 && !around)
        return kNameBytes + Store(WithChangedBlock(before, streams.back(), room, seed), file, room);
    if (game == kTR4 || around)
        return kNameBytes + Store(Mangled(before, room), file, room);
    return kNameBytes + MutateTables(file, before.size(), room, game, seed);
}

} // namespace morlik::fuzz
