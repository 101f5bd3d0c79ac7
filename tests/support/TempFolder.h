#pragma once

#include "base/OutputFile.h"
#include "base/Text.h"

#include <filesystem>
#include <random>
#include <span>
#include <string>

namespace morlik::test
{

/// A new folder of its own below another one, that for temporary files if none is told, removed at
/// the end.
class TempFolder
{
public:
    explicit TempFolder(const std::filesystem::path& in = std::filesystem::temp_directory_path())
    {
        std::random_device random;
        do
            path_ = in / ("morlik-" + Hex(random()));
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

    /// Writes a file of the folder and gives its path.
    std::string Write(const std::string& name, std::span<const std::byte> bytes) const
    {
        WriteWholeFile(File(name), bytes);
        return File(name);
    }
    std::string Write(const std::string& name, std::string_view text) const
    {
        return Write(name, std::as_bytes(std::span(text)));
    }

private:
    std::filesystem::path path_;
};

} // namespace morlik::test
