#include "base/Bytes.h"

#include <algorithm>

namespace morlik
{

void ByteReader::Seek(std::size_t position)
{
    if (position > bytes_.size())
        Fail("a jump to offset " + std::to_string(position) + " leaves the " +
             std::to_string(bytes_.size()) + " bytes");
    position_ = position;
}

void ByteReader::SeekUpTo(std::size_t position)
{
    position_ = std::min(position, bytes_.size());
}

std::span<const std::byte> ByteReader::TakeTable(std::int64_t count, std::size_t size)
{
    if (count < 0)
        Fail("a count of " + std::to_string(count));
    const auto records = static_cast<std::uint64_t>(count);
    if (records > Left() && size == 1)
        FailShort(static_cast<std::size_t>(records));
    if (records > Left() / size)
        Fail(std::to_string(count) + " records of " + std::to_string(size) + " bytes wanted, " +
             std::to_string(Left()) + " bytes left");
    return Take(static_cast<std::size_t>(records) * size);
}

void ByteReader::Fail(const std::string& why) const
{
    throw ReadFailure(std::string(section_) + ", offset " + std::to_string(position_) + ": " + why);
}

void ByteReader::FailShort(std::size_t wanted) const
{
    Fail(std::to_string(wanted) + " bytes wanted, " + std::to_string(Left()) + " left");
}

} // namespace morlik
