#pragma once

#include "base/Bytes.h"
#include "base/PhaseTimes.h"
#include "base/Uninitialised.h"

#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace morlik
{

/// A file that can't be opened, read or written; `what()` is the message for the user.
class FileFailure : public std::runtime_error
{
public:
    FileFailure(const std::string& doing, const std::string& path, const std::string& reason)
        : std::runtime_error("Can't " + doing + " " + path + ": " + reason)
    {
    }
};

/// The whole content of a file in memory.
class FileBytes
{
public:
    /// Reads the file at `path`. A file that can't be opened or is larger than `most`, and anything
    /// that is no plain file, is a `FileFailure`.
    static FileBytes Load(const std::string& path, std::size_t most = kMostBytes);

    /// No input of this program comes near this size; it keeps a wrong pick from filling the
    /// memory.
    static constexpr std::size_t kMostBytes = std::size_t{512} << 20U;

    std::span<const std::byte> Bytes() const { return data_; }

private:
    UninitialisedVector<std::byte> data_;
};

/// A binary output file. Failures to open, write or close are `FileFailure`s. Without `Close` the
/// end of its life writes what is buffered and reports nothing: what a stopped save has written
/// stays on disk.
///
/// A file that is there already is written over and then cut, not emptied first: file systems
/// that guard against lost files write an emptied one to the disk at once when it is closed, which
/// takes longer than all other work on a level. The price: a process that is killed in between
/// leaves the rest of the old content behind the new.
class OutputFile : public ByteSink
{
public:
    /// With `times` the writes count for `Phase::Write` there.
    explicit OutputFile(std::string path, PhaseTimes* times = nullptr);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile() override;

    void PutBytes(std::span<const std::byte> bytes) override;
    void PutText(std::string_view text) { PutBytes(std::as_bytes(std::span(text))); }

    /// Hands what is buffered to the system; the file ends there until more is written.
    void Flush();
    void Close();

private:
    void WriteBuffer();
    void Write(std::span<const std::byte> bytes);
    /// Cuts what is left of the file that was there before.
    std::error_code CutRest();
    [[noreturn]] void Fail() const;

    std::string path_;
    PhaseTimes* times_;
    std::ofstream stream_;
    std::uintmax_t written_ = 0;
    std::uintmax_t oldSize_ = 0; ///< of the file that is written over
    std::vector<std::byte> buffer_;
};

/// Makes `bytes` the content of the file at `path`, which may exist.
void WriteWholeFile(const std::string& path, std::span<const std::byte> bytes);

} // namespace morlik
