#pragma once

#include "base/Bytes.h"
#include "base/Narrow.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morlik::samples
{

enum class MarkKind : std::uint8_t
{
    Section, ///< a stretch of the file; the sections follow each other without gaps
    Count    ///< a count or size field inside a section
};

/// A place in a written file.
struct Mark
{
    std::string Name{};
    std::size_t Offset = 0;
    std::size_t Size = 0;
    MarkKind Kind = MarkKind::Section;
};

/// A written file with its places, so that a test can cut it at every boundary and damage every
/// count. Rooms and the like number their names: "Room 0 portals".
struct LevelFile
{
    std::vector<std::byte> Bytes;
    std::vector<Mark> Marks; ///< in file order

    /// The first mark of that name; a name that isn't there is a `std::out_of_range`.
    const Mark& Find(std::string_view name, MarkKind kind) const
    {
        for (const Mark& mark : Marks)
            if (mark.Kind == kind && mark.Name == name)
                return mark;
        throw std::out_of_range("no mark " + std::string(name));
    }
    const Mark& Section(std::string_view name) const { return Find(name, MarkKind::Section); }
    const Mark& Count(std::string_view name) const { return Find(name, MarkKind::Count); }

    /// Overwrites the count of that name with `value`, in the field's own width.
    void SetCount(std::string_view name, std::int64_t value) { Set(Count(name), value); }
    /// The same for a mark at hand, of 8 bytes at the most.
    void Set(const Mark& mark, std::int64_t value)
    {
        std::memcpy(&Bytes.at(mark.Offset), &value, mark.Size);
    }
    /// What stands at a mark, without regard to a sign.
    std::int64_t Value(const Mark& mark) const
    {
        std::int64_t value = 0;
        std::memcpy(&value, &Bytes.at(mark.Offset), mark.Size);
        return value;
    }
};

/// Gathers a file and marks its sections and counts on the way.
class MarkedWriter : public ByteSink
{
public:
    void PutBytes(std::span<const std::byte> bytes) override
    {
        file_.Bytes.insert(file_.Bytes.end(), bytes.begin(), bytes.end());
    }
    void PutText(std::string_view text) { PutBytes(std::as_bytes(std::span(text))); }

    /// Bytes that no reader looks at. Not zero: a reader that is out of step must not find
    /// harmless counts in them.
    void PutFiller(std::size_t count) { file_.Bytes.resize(Size() + count, std::byte{0x5a}); }

    std::size_t Size() const { return file_.Bytes.size(); }
    const std::vector<std::byte>& Bytes() const { return file_.Bytes; }

    /// Begins a section; the one before it ends here.
    void Section(std::string name)
    {
        file_.Marks.push_back({std::move(name), Size(), 0, MarkKind::Section});
    }

    /// A count field of type `T`.
    template <class T>
    void Count(std::string name, std::size_t value)
    {
        file_.Marks.push_back({std::move(name), Size(), sizeof(T), MarkKind::Count});
        Put(narrow<T>(value));
    }

    /// A section of a count and its records; both marks take `name`.
    template <class CountType, Packed Record>
    void CountedTable(const std::string& name, const std::vector<Record>& table)
    {
        Section(name);
        Count<CountType>(name, table.size());
        PutTable(table);
    }

    /// A section of a count and as many records of `bytes` bytes that no reader looks into.
    template <class CountType>
    void CountedFiller(const std::string& name, std::size_t count, std::size_t bytes)
    {
        Section(name);
        Count<CountType>(name, count);
        PutFiller(count * bytes);
    }

    /// The finished file.
    LevelFile Finish() &&
    {
        std::size_t end = Size();
        for (std::size_t i = file_.Marks.size(); i-- > 0;) {
            Mark& mark = file_.Marks[i];
            if (mark.Kind == MarkKind::Section) {
                mark.Size = end - mark.Offset;
                end = mark.Offset;
            }
        }
        return std::move(file_);
    }

private:
    LevelFile file_;
};

} // namespace morlik::samples
