#ifndef _WIN32

#include "platform/Trial.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace morlik::test
{

namespace
{

using namespace std::chrono_literals;

TEST(Trial, TellsWhatWorkWouldHaveDoneToTheProcess)
{
    struct Row
    {
        const char* Name;
        std::function<bool()> Work;
        bool IsGood;
    };
    const std::vector<Row> rows{
        {"good", [] { return true; }, true},
        {"not good", [] { return false; }, false},
        {"throws", []() -> bool { throw std::runtime_error("no"); }, false},
        {"ends", []() -> bool { std::_Exit(0); }, false},
        {"aborts", []() -> bool { std::abort(); }, false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Trial(row.Work, 20s).IsGood(), row.IsGood) << row.Name;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(Trial([] { return std::this_thread::sleep_for(60s), true; }, 50ms).IsGood());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s); // the child isn't waited for
}

} // namespace

} // namespace morlik::test

#endif
