#include "base/OutputFile.h"

#include "base/Text.h"
#include "system/FileCalls.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace morlik
{

namespace
{

namespace fs = std::filesystem;

constexpr std::size_t kBufferBytes = std::size_t{64} << 10U;

} // namespace

OutputFile::OutputFile(std::string path, std::string shownAs, PhaseTimes* times)
    : path_(std::move(path)), shownAs_(std::move(shownAs)), times_(times)
{
    stream_.rdbuf()->pubsetbuf(nullptr, 0);
    errno = 0;
    stream_.open(ToPath(path_), std::ios::binary | std::ios::trunc);
    if (!stream_)
        Fail();
    buffer_.reserve(kBufferBytes);
}

OutputFile::~OutputFile()
{
    try {
        WriteBuffer();
    } catch (const FileFailure&) {
        // The writer of the file has left already; nobody is there to be told.
        buffer_.clear();
    }
}

void OutputFile::PutBytes(std::span<const std::byte> bytes)
{
    if (bytes.size() > kBufferBytes - buffer_.size())
        WriteBuffer();
    if (bytes.size() >= kBufferBytes)
        Write(bytes);
    else
        buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
}

void OutputFile::Close()
{
    if (!stream_.is_open())
        return;
    WriteBuffer();
    errno = 0;
    stream_.close();
    if (!stream_)
        Fail();
}

void OutputFile::WriteBuffer()
{
    if (buffer_.empty())
        return;
    Write(buffer_);
    buffer_.clear();
}

void OutputFile::Write(std::span<const std::byte> bytes)
{
    const Phase before = times_ != nullptr ? times_->Change(Phase::Write) : Phase::Write;
    errno = 0;
    stream_.write(reinterpret_cast<const char*>(bytes.data()),
                  static_cast<std::streamsize>(bytes.size()));
    const auto reason = errno;
    if (times_ != nullptr)
        times_->Change(before);
    errno = reason;
    if (!stream_)
        Fail();
}

void OutputFile::Fail() const
{
    throw FileFailure("write", shownAs_, LastReason());
}

void CheckPlace(const std::string& path)
{
    std::error_code missing;
    const auto status = fs::symlink_status(ToPath(path), missing);
    if (status.type() == fs::file_type::directory)
        throw FileFailure("write", path, "Is a directory");
    const bool isPlain = status.type() == fs::file_type::regular;
    if (isPlain || status.type() == fs::file_type::not_found) {
        if (const auto fault = isPlain ? MayWrite(ToPath(path)) : std::error_code())
            throw FileFailure("write", path,
                              fault == std::errc::text_file_busy
                                  ? "Another program has it open"
                                  : fault.default_error_condition().message());
    } else if (status.type() != fs::file_type::symlink && status.type() != fs::file_type::none) {
        throw FileFailure("write", path, "It is a device or a pipe, no file");
    }
}

} // namespace morlik
