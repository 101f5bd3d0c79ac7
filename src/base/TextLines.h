#pragma once

#include "base/OutputFile.h"

#include <optional>
#include <string_view>

namespace morlik
{

/// Flag of a text that ends its line; booleans in integer form are -1 for true.
constexpr std::int16_t kEndLine = -1;

/// A text file written line by line, each line ended by CR LF. A file that is not open swallows
/// its lines. Writing never fails; a failure is kept and comes up as `FileFailure` in `Close`.
class TextLines
{
public:
    /// Opens the file at `path`, in place of one that is there; a `FileFailure`, which calls it
    /// `shownAs`, if that can't be done.
    void Open(const std::string& path, const std::string& shownAs);
    void Open(const std::string& path) { Open(path, path); }
    /// The same for a file that takes its place in `Close` only.
    void OpenNew(const std::string& path);
    bool IsOpen() const { return file_ != nullptr; }

    /// Writes `text`, and ends the line if `flag` is `kEndLine`; else the next text continues it.
    void Line(std::string_view text, std::int16_t flag = kEndLine);
    void Flush();
    void Close();
    /// Ends the file as far as it is written; a failure is not told. For a save that stops.
    void Abandon();

private:
    void Keep(void (*write)(OutputFile&, std::string_view), std::string_view text);

    std::optional<OutputFile> plain_;
    std::optional<NewFile> new_;
    OutputFile* file_ = nullptr; ///< one of them, or null
    std::optional<FileFailure> failure_;
};

} // namespace morlik
