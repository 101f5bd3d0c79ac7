#include "base/TextLines.h"

#include <utility>

namespace morlik
{

void TextLines::Open(const std::string& path)
{
    failure_.reset();
    file_.reset();
    file_.emplace(path);
}

void TextLines::Line(std::string_view text, std::int16_t flag)
{
    const auto put = [](OutputFile& file, std::string_view piece) { file.PutText(piece); };
    Keep(put, text);
    if (flag == kEndLine)
        Keep(put, "\r\n");
}

void TextLines::Flush()
{
    Keep([](OutputFile& file, std::string_view) { file.Flush(); }, {});
}

void TextLines::Close()
{
    Keep([](OutputFile& file, std::string_view) { file.Close(); }, {});
    file_.reset();
    if (const auto failure = std::exchange(failure_, std::nullopt))
        throw FileFailure(*failure);
}

void TextLines::Keep(void (*write)(OutputFile&, std::string_view), std::string_view text)
{
    if (!file_ || failure_)
        return;
    try {
        write(*file_, text);
    } catch (const FileFailure& failure) {
        failure_ = failure;
    }
}

} // namespace morlik
