#include "base/TextLines.h"

#include "base/Text.h"

#include <filesystem>
#include <utility>

namespace morlik
{

void TextLines::Open(const std::string& path, const std::string& shownAs)
{
    Abandon();
    // File systems that guard against lost files write an emptied one to the disk at once when it
    // is closed, and a fresh one in its own time. A link would lead to a file of somebody else.
    using std::filesystem::file_type;
    std::error_code fault;
    const auto type = std::filesystem::symlink_status(ToPath(path), fault).type();
    if (type == file_type::regular || type == file_type::symlink)
        std::filesystem::remove(ToPath(path), fault);
    file_ = &plain_.emplace(path, shownAs);
}

void TextLines::OpenNew(const std::string& path)
{
    Abandon();
    file_ = &new_.emplace(path).File();
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
    auto failure = std::exchange(failure_, std::nullopt);
    if (new_ && !failure)
        try {
            new_->TakePlace();
        } catch (const FileFailure& fault) {
            failure = fault;
        }
    Abandon();
    if (failure)
        throw FileFailure(*failure);
}

void TextLines::Abandon()
{
    file_ = nullptr;
    plain_.reset();
    new_.reset();
    failure_.reset();
}

void TextLines::Keep(void (*write)(OutputFile&, std::string_view), std::string_view text)
{
    if (file_ == nullptr || failure_)
        return;
    try {
        write(*file_, text);
    } catch (const FileFailure& failure) {
        failure_ = failure;
    }
}

} // namespace morlik
