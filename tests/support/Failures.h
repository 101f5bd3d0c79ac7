#pragma once

#include "base/Files.h"

#include <string>

namespace morlik::test
{

/// The message of the `FileFailure` that `work` ends in; empty where it doesn't fail.
template <class Work>
std::string FailureOf(Work work)
{
    try {
        work();
    } catch (const FileFailure& failure) {
        return failure.what();
    }
    return {};
}

} // namespace morlik::test
