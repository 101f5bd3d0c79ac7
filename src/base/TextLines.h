#pragma once

#include "base/Files.h"

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
    /// Creates the file, or opens it to be replaced; a `FileFailure` if that can't be done. What an
    /// old one held is gone with the first `Flush` or at the end.
    void Open(const std::string& path);
    bool IsOpen() const { return file_.has_value(); }

    /// Writes `text`, and ends the line if `flag` is `kEndLine`; else the next text continues it.
    void Line(std::string_view text, std::int16_t flag = kEndLine);
    void Flush();
    void Close();
    /// Ends the file as far as it is written; a failure is not told. For a save that stops.
    void Abandon() { file_.reset(); }

private:
    void Keep(void (*write)(OutputFile&, std::string_view), std::string_view text);

    std::optional<OutputFile> file_;
    std::optional<FileFailure> failure_;
};

} // namespace morlik
