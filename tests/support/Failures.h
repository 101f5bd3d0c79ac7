#pragma once

#include "base/Files.h"

#include <string>

namespace morlik::test
{

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

} // namespace morlik::test
