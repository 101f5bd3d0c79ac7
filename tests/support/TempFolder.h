#pragma once

#include "base/Text.h"

#include <filesystem>
#include <random>
#include <string>

namespace morlik::test
{

/// A new folder of its own below the system's folder for temporary files, removed at the end.
class TempFolder
{
public:
    TempFolder()
    {
        std::random_device random;
        do
            path_ = std::filesystem::temp_directory_path() / ("morlik-" + Hex(random()));
        while (!std::filesystem::create_directory(path_));
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder()
    {
        std::error_code ignored; // a test must not fail for what is left behind
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& Path() const { return path_; }

    /// Path of a file in the folder.
    std::string File(const std::string& name) const { return FromPath(path_ / ToPath(name)); }

private:
    std::filesystem::path path_;
};

} // namespace morlik::test
