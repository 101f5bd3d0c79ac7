#include "base/Narrow.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>

namespace morlik::test
{

namespace
{

constexpr std::array<std::byte, 10> kTen{};

TEST(ByteReader, RefusesEveryStepThatLeavesTheBytes)
{
    using Limits = std::numeric_limits<std::int64_t>;
    struct Step
    {
        const char* Name;
        void (*Take)(ByteReader&);
    };
    const std::vector<Step> steps{
        {"a value across the end", [](ByteReader& r) { r.Skip(4), r.Read<std::int32_t>(); }},
        {"a size that would wrap", [](ByteReader& r) { r.Take(static_cast<std::size_t>(-1)); }},
        {"one record too many", [](ByteReader& r) { r.Table<std::int32_t>(2); }},
        {"a negative count", [](ByteReader& r) { r.Table<std::int32_t>(-1); }},
        {"a count whose bytes wrap to 0",
         [](ByteReader& r) { r.SkipTable(Limits::max() / 2 + 1, 4); }},
        {"the largest count", [](ByteReader& r) { r.Table<std::int32_t>(Limits::max()); }},
        {"the least count", [](ByteReader& r) { r.TakeTable(Limits::min(), 1); }},
        {"a jump behind the end", [](ByteReader& r) { r.Seek(11); }},
    };
    for (const Step& step : steps) {
        ByteReader reader(kTen);
        reader.Skip(3);
        EXPECT_THROW(step.Take(reader), ReadFailure) << step.Name;
    }
}

TEST(ByteReader, ReachesTheLastByteAndTellsWhereItFailed)
{
    ByteReader reader(kTen);
    reader.Section("frames");
    reader.Seek(10);
    EXPECT_TRUE(reader.Table<std::int64_t>(0).empty());
    reader.SeekUpTo(11);
    EXPECT_EQ(reader.Left(), 0U);
    reader.Seek(2);
    EXPECT_EQ(reader.Table<std::int64_t>(1).size(), 1U);
    reader.Seek(2);
    try {
        reader.Table<std::int32_t>(3);
        FAIL();
    } catch (const ReadFailure& failure) {
        EXPECT_STREQ(failure.what(), "frames, offset 2: 3 records of 4 bytes wanted, 8 bytes left");
    }
}

TEST(Narrow, KeepsWhatFitsAndFailsOnTheRest)
{
    EXPECT_EQ(narrow<std::uint8_t>(255), 255);
    EXPECT_THROW(narrow<std::uint8_t>(256), ReadFailure);
    EXPECT_THROW(narrow<std::uint8_t>(-1), ReadFailure);
    EXPECT_EQ(Word(0xe005), -8187);
}

} // namespace

} // namespace morlik::test
