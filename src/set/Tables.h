#pragma once

#include "base/Bytes.h"
#include "base/Narrow.h"
#include "set/Tiles.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace morlik
{

/// How the tables of a set's files are written and read back: one description of a file, a function
/// with the tables in their order, serves both. Every table stands behind a 32-bit count.
class TableWriter
{
public:
    /// `progress` is told of tiles, where the file has some.
    explicit TableWriter(ByteSink& out, TileProgress* progress = nullptr)
        : out_(out), progress_(progress)
    {
    }

    template <Packed Record>
    void Value(const char* /*section*/, const Record& value)
    {
        out_.Put(value);
    }

    /// A fixed first word.
    void Version(std::int32_t version) { out_.Put(version); }

    /// `emptyCount` is the count that stands before an empty table.
    template <Packed Record>
    void Table(const char* /*section*/, const std::vector<Record>& table,
               std::int32_t emptyCount = 0)
    {
        out_.Put(CountOf(table, emptyCount));
        out_.PutTable(table);
    }

    /// Records whose fields stand otherwise in memory.
    template <class Fields>
    void FieldTable(const char* /*section*/, const std::vector<typename Fields::Record>& table)
    {
        out_.Put(CountOf(table, 0));
        for (const auto& record : table)
            Fields::Write(out_, record);
    }

    /// Bytes whose count is one of 16-bit words.
    void WordTable(const char* /*section*/, const std::vector<std::byte>& bytes)
    {
        out_.Put(narrow<std::int32_t>(bytes.size() / 2));
        out_.PutBytes(bytes);
    }

    void Tiles(const char* /*section*/, const SetTiles& tiles)
    {
        WriteTiles(out_, tiles, *progress_);
    }

private:
    template <class Record>
    static std::int32_t CountOf(const std::vector<Record>& table, std::int32_t emptyCount)
    {
        return table.empty() ? emptyCount : narrow<std::int32_t>(table.size());
    }

    ByteSink& out_;
    TileProgress* progress_;
};

/// A table that runs past the end, and a count below 0, are `ReadFailure`s.
class TableReader
{
public:
    /// `owner` keeps the bytes alive, which tiles are views into.
    explicit TableReader(std::span<const std::byte> bytes, std::shared_ptr<const void> owner = {})
        : reader_(bytes), owner_(std::move(owner))
    {
    }

    template <Packed Record>
    void Value(const char* section, Record& value)
    {
        reader_.Section(section);
        value = reader_.Read<Record>();
    }

    void Version(std::int32_t version)
    {
        reader_.Section("version");
        const auto found = reader_.Read<std::int32_t>();
        if (found != version)
            reader_.Fail("the version is " + std::to_string(found) + ", not " +
                         std::to_string(version));
    }

    template <Packed Record>
    void Table(const char* section, std::vector<Record>& table, std::int32_t /*emptyCount*/ = 0)
    {
        table = reader_.Table<Record>(Count(section));
    }

    template <class Fields>
    void FieldTable(const char* section, std::vector<typename Fields::Record>& table)
    {
        table = Fields::ReadTable(reader_, Count(section));
    }

    void WordTable(const char* section, std::vector<std::byte>& bytes)
    {
        bytes = reader_.Table<std::byte>(2 * std::int64_t{Count(section)});
    }

    /// Nothing stands behind the last table.
    void ExpectEnd()
    {
        reader_.Section("end of the file");
        if (reader_.Left() != 0)
            reader_.Fail(std::to_string(reader_.Left()) + " bytes stand behind the last block");
    }

    void Tiles(const char* section, SetTiles& tiles)
    {
        reader_.Section(section);
        tiles = ReadTiles(reader_, owner_);
    }

private:
    std::int32_t Count(const char* section)
    {
        reader_.Section(section);
        const auto count = reader_.Read<std::int32_t>();
        if (count < 0) // a set keeps the count that its level has for an empty table
            reader_.Fail("a count of " + std::to_string(count) +
                         ", as damaged levels have it; the set is to be made of a good one");
        return count;
    }

    ByteReader reader_;
    std::shared_ptr<const void> owner_;
};

} // namespace morlik
