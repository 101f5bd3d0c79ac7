#pragma once

#include "base/Bytes.h"
#include "base/Narrow.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morlik::samples
{

enum class MarkKind
{
    Section, ///< a stretch of the file; the sections follow each other without gaps
    Count    ///< a count or size field inside a section
};

/// A place in a written file.
struct Mark
{
    std::string Name;
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
    const Mark& Find(std::string_view name, MarkKind kind) const;
    const Mark& Section(std::string_view name) const { return Find(name, MarkKind::Section); }
    const Mark& Count(std::string_view name) const { return Find(name, MarkKind::Count); }

    /// Overwrites the count of that name with `value`, in the field's own width.
    void SetCount(std::string_view name, std::int64_t value) { Set(Count(name), value); }
    /// The same for a mark at hand.
    void Set(const Mark& mark, std::int64_t value);
    /// What stands at a mark of 8 bytes at the most, without regard to a sign.
    std::int64_t Value(const Mark& mark) const;

    template <Packed T>
    void Patch(std::size_t offset, const T& value)
    {
        if (offset > Bytes.size() || sizeof(T) > Bytes.size() - offset)
            throw std::out_of_range("patch behind the end");
        std::memcpy(Bytes.data() + offset, &value, sizeof(T));
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

    std::size_t Size() const { return file_.Bytes.size(); }

    /// Bytes that no reader looks at. Not zero: a reader that is out of step must not find
    /// harmless counts in them.
    void PutFiller(std::size_t count);

    /// Begins a section; the one before it ends here.
    void Section(std::string name);

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

    /// The finished file.
    LevelFile Finish() &&;

private:
    void EndSection();

    LevelFile file_;
    std::size_t open_ = kNone; ///< mark of the running section
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
};

} // namespace morlik::samples
