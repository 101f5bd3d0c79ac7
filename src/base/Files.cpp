#include "base/Files.h"

#include "base/Text.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace morlik
{

namespace
{

constexpr std::size_t kBufferBytes = std::size_t{64} << 10U;

std::string LastReason()
{
    return errno != 0 ? std::generic_category().message(errno) : "unknown reason";
}

} // namespace

FileBytes FileBytes::Load(const std::string& path, std::size_t most)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(ToPath(path), error);
    if (error)
        // The condition has the same words on every system.
        throw FileFailure("open", path, error.default_error_condition().message());
    if (size > most)
        throw FileFailure("open", path,
                          std::to_string(size) + " bytes are more than any such file has");

    errno = 0;
    std::ifstream stream;
    stream.rdbuf()->pubsetbuf(nullptr, 0);
    stream.open(ToPath(path), std::ios::binary);
    if (!stream)
        throw FileFailure("open", path, LastReason());

    FileBytes file;
    file.data_.resize(static_cast<std::size_t>(size));
    stream.read(reinterpret_cast<char*>(file.data_.data()), static_cast<std::streamsize>(size));
    file.data_.resize(static_cast<std::size_t>(stream.gcount()));
    if (stream.bad())
        throw FileFailure("open", path, LastReason());
    return file;
}

OutputFile::OutputFile(std::string path, PhaseTimes* times) : path_(std::move(path)), times_(times)
{
    stream_.rdbuf()->pubsetbuf(nullptr, 0);
    std::error_code notPlain; // no such file, a device: nothing of it can be left over
    const auto oldSize = std::filesystem::file_size(ToPath(path_), notPlain);
    if (!notPlain) {
        stream_.open(ToPath(path_), std::ios::binary | std::ios::in);
        if (stream_.is_open())
            oldSize_ = oldSize;
    }
    errno = 0;
    if (!stream_.is_open())
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
    CutRest();
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

void OutputFile::Flush()
{
    WriteBuffer();
    if (const std::error_code fault = CutRest())
        throw FileFailure("write", path_, fault.default_error_condition().message());
}

void OutputFile::Close()
{
    Flush();
    errno = 0;
    stream_.close();
    if (!stream_)
        Fail();
}

void OutputFile::WriteBuffer()
{
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
    written_ += bytes.size();
}

std::error_code OutputFile::CutRest()
{
    std::error_code fault;
    if (written_ < std::exchange(oldSize_, 0))
        std::filesystem::resize_file(ToPath(path_), written_, fault);
    return fault;
}

void OutputFile::Fail() const
{
    throw FileFailure("write", path_, LastReason());
}

void WriteWholeFile(const std::string& path, std::span<const std::byte> bytes)
{
    OutputFile file(path);
    file.PutBytes(bytes);
    file.Close();
}

} // namespace morlik
