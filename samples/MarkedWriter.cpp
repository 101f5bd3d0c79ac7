#include "samples/MarkedWriter.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace morlik::samples
{

const Mark& LevelFile::Find(std::string_view name, MarkKind kind) const
{
    const auto found = std::find_if(Marks.begin(), Marks.end(), [&](const Mark& mark) {
        return mark.Kind == kind && mark.Name == name;
    });
    if (found == Marks.end())
        throw std::out_of_range("no mark " + std::string(name));
    return *found;
}

void LevelFile::Set(const Mark& mark, std::int64_t value)
{
    if (mark.Size > sizeof value || mark.Offset + mark.Size > Bytes.size())
        throw std::out_of_range("mark " + mark.Name + " is no field of the file");
    std::memcpy(Bytes.data() + mark.Offset, &value, mark.Size);
}

std::int64_t LevelFile::Value(const Mark& mark) const
{
    std::int64_t value = 0;
    if (mark.Size > sizeof value || mark.Offset + mark.Size > Bytes.size())
        throw std::out_of_range("mark " + mark.Name + " is no field of the file");
    std::memcpy(&value, Bytes.data() + mark.Offset, mark.Size);
    return value;
}

void MarkedWriter::PutFiller(std::size_t count)
{
    constexpr std::byte kFiller{0x5a};
    file_.Bytes.resize(file_.Bytes.size() + count, kFiller);
}

void MarkedWriter::Section(std::string name)
{
    EndSection();
    open_ = file_.Marks.size();
    file_.Marks.push_back({std::move(name), Size(), 0, MarkKind::Section});
}

void MarkedWriter::EndSection()
{
    if (open_ != kNone)
        file_.Marks[open_].Size = Size() - file_.Marks[open_].Offset;
}

LevelFile MarkedWriter::Finish() &&
{
    EndSection();
    return std::move(file_);
}

} // namespace morlik::samples
