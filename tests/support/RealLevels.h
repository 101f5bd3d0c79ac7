#pragma once

#include "base/Text.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace morlik::test
{

/// The levels of the folder `MORLIK_LEVELS`, or those beside the checkout, or of a folder below;
/// none where there is no such folder.
inline std::vector<std::string> RealLevels(const std::string& below = {})
{
    const char* chosen = std::getenv("MORLIK_LEVELS"); // NOLINT(concurrency-mt-unsafe)
    const std::filesystem::path folder =
        std::filesystem::path(chosen != nullptr ? chosen : MORLIK_LEVEL_FOLDER) / below;
    std::vector<std::string> levels;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing))
        if (entry.is_regular_file() && entry.path().extension() != ".md")
            levels.push_back(FromPath(entry.path()));
    std::sort(levels.begin(), levels.end());
    return levels;
}

} // namespace morlik::test
