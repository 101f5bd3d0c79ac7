#ifndef _WIN32

#include "platform/Trial.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace morlik::test
{

using namespace std::chrono_literals;

TEST(Trial, TellsWhatWorkWouldHaveDoneToTheProcess)
{
    const std::vector<std::tuple<const char*, std::function<bool()>, bool>> rows{
        {"good", [] { return true; }, true},
        {"not good", [] { return false; }, false},
        {"throws", []() -> bool { throw std::runtime_error("no"); }, false},
        {"ends", []() -> bool { std::_Exit(0); }, false},
        {"aborts", []() -> bool { std::abort(); }, false},
    };
    for (const auto& [name, work, isGood] : rows)
        EXPECT_EQ(Trial(work, 20s).IsGood(), isGood) << name;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(Trial([] { return std::this_thread::sleep_for(60s), true; }, 50ms).IsGood());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s); // the child isn't waited for
}

} // namespace morlik::test

#endif
