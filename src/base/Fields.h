#pragma once

#include "base/Bytes.h"

#include <array>
#include <cstddef>

namespace morlik
{

namespace detail
{
template <class Record, class Member>
Member MemberOf(Member Record::*);
template <class Record, class Member>
Record RecordOf(Member Record::*);
} // namespace detail

/// The layout of a record that is wider or padded in memory: its fields in file order, each
/// as wide as in memory, without gaps. One list serves reading and writing.
template <auto First, auto... Rest>
struct FieldList
{
    using Record = decltype(detail::RecordOf(First));

    /// Size of one record in the file.
    static constexpr std::size_t kBytes =
        (sizeof(detail::MemberOf(First)) + ... + sizeof(detail::MemberOf(Rest)));

    static void Read(ByteReader& reader, Record& record)
    {
        const auto bytes = reader.Take(kBytes);
        const std::byte* at = bytes.data();
        Load(at, record.*First);
        (Load(at, record.*Rest), ...);
    }

    static void Write(ByteSink& sink, const Record& record)
    {
        std::array<std::byte, kBytes> bytes;
        std::byte* at = bytes.data();
        Store(at, record.*First);
        (Store(at, record.*Rest), ...);
        sink.PutBytes(bytes);
    }

    /// `count` records, checked against what is left before the table is made.
    static std::vector<Record> ReadTable(ByteReader& reader, std::int64_t count)
    {
        ByteReader records(reader.TakeTable(count, kBytes));
        std::vector<Record> table(static_cast<std::size_t>(count));
        for (Record& record : table)
            Read(records, record);
        return table;
    }

private:
    template <class Member>
    static void Load(const std::byte*& at, Member& member)
    {
        std::memcpy(&member, at, sizeof(Member));
        at += sizeof(Member);
    }
    template <class Member>
    static void Store(std::byte*& at, const Member& member)
    {
        std::memcpy(at, &member, sizeof(Member));
        at += sizeof(Member);
    }
};

} // namespace morlik
