#pragma once

#include "base/Files.h"
#include "base/VersionCode.h"

#include <ostream>
#include <string>

namespace morlik
{

/// For the messages of failed tests.
inline std::ostream& operator<<(std::ostream& out, VersionCode version)
{
    return out << NumberOf(version);
}

namespace test
{

/// For `EXPECT_PRED2`, which prints both texts where the first lacks the second.
inline bool Has(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

/// The message of the failure that `work` ends in; empty where it doesn't fail.
template <class Failure, class Work>
std::string MessageOf(Work work)
{
    try {
        work();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return {};
}

template <class Work>
std::string FailureOf(Work work)
{
    return MessageOf<FileFailure>(work);
}

} // namespace test

} // namespace morlik
