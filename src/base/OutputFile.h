#pragma once

#include "base/Bytes.h"
#include "base/Files.h"
#include "base/PhaseTimes.h"

#include <fstream>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace morlik
{

/// A binary file that is written from its start. Failures to open, write or close are
/// `FileFailure`s. Without `Close` the end of its life writes what is buffered and reports nothing.
/// What is to replace another file is a `NewFile` or belongs to a `FileGroup`.
class OutputFile : public ByteSink
{
public:
    /// Creates the file at `path`, in place of a plain file that is there. Messages call it
    /// `shownAs`. With `times` the writes count for `Phase::Write` there.
    OutputFile(std::string path, std::string shownAs, PhaseTimes* times = nullptr);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile() override;

    void PutBytes(std::span<const std::byte> bytes) override;
    void PutText(std::string_view text) { PutBytes(std::as_bytes(std::span(text))); }

    /// Hands what is buffered to the system.
    void Flush() { WriteBuffer(); }
    void Close();

private:
    void WriteBuffer();
    void Write(std::span<const std::byte> bytes);
    [[noreturn]] void Fail() const;

    std::string path_;
    std::string shownAs_;
    PhaseTimes* times_;
    std::ofstream stream_;
    std::vector<std::byte> buffer_;
};

/// Refuses a place that no file can take: one that is a folder, a device or a pipe, or that may not
/// be written. A link there is only a name that goes. `FileFailure`.
void CheckPlace(const std::string& path);

class FileGroup;

/// A file that takes its place only when it is whole: a `FileGroup` of one, so that what a process
/// leaves that is killed goes with the next one. Without `TakePlace`, and where that fails, what
/// stood there stays.
/// Standard output and the like (`/dev/stdout`, `/dev/stderr`, `/dev/null`, `/dev/fd/...`; `NUL`
/// and `CON` on Windows) are written at once.
class NewFile
{
public:
    explicit NewFile(const std::string& path, PhaseTimes* times = nullptr);
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile();

    OutputFile& File() { return file_; }
    /// Closes the file and puts it in its place.
    void TakePlace();

private:
    /// None where the place is written at once. It goes after the file: one that is open can't be
    /// removed on every system.
    std::unique_ptr<FileGroup> group_;
    OutputFile file_;
};

/// Makes `bytes` the content of the file at `path`, which may exist.
void WriteWholeFile(const std::string& path, std::span<const std::byte> bytes);

} // namespace morlik
