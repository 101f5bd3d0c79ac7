#include "system/FileCalls.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace morlik
{

namespace
{

std::error_code LastError()
{
    return {errno, std::generic_category()};
}

class PosixHeldFile : public HeldFile
{
public:
    PosixHeldFile(int descriptor, std::filesystem::path path)
        : descriptor_(descriptor), path_(std::move(path))
    {
    }
    PosixHeldFile(const PosixHeldFile&) = delete;
    PosixHeldFile& operator=(const PosixHeldFile&) = delete;
    ~PosixHeldFile() override { close(descriptor_); }

    std::string Note() const override
    {
        constexpr std::size_t kMostBytes = std::size_t{1} << 20U;
        struct stat status = {};
        if (fstat(descriptor_, &status) != 0 || status.st_size <= 0)
            return {};
        std::string note(std::min(static_cast<std::size_t>(status.st_size), kMostBytes), '\0');
        const auto size = pread(descriptor_, note.data(), note.size(), 0);
        note.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
        return note;
    }

    std::error_code SetNote(std::string_view note) override
    {
        errno = ENOSPC;
        const auto size = pwrite(descriptor_, note.data(), note.size(), 0);
        return std::cmp_equal(size, note.size()) ? std::error_code() : LastError();
    }

    void Remove() override { unlink(path_.c_str()); }

    /// Whether the path still leads to the file: the holder before may have removed it meanwhile.
    bool IsThere() const
    {
        struct stat mine = {};
        struct stat there = {};
        return fstat(descriptor_, &mine) == 0 && stat(path_.c_str(), &there) == 0 &&
               mine.st_ino == there.st_ino && mine.st_dev == there.st_dev;
    }

private:
    int descriptor_;
    std::filesystem::path path_;
};

} // namespace

std::error_code TakePlace(const std::filesystem::path& fresh, const std::filesystem::path& place)
{
#ifdef RENAME_EXCHANGE
    // A rename over a file may write the new one to the disk at once, which takes longer than all
    // other work on a level. An exchange doesn't.
    const auto exchange = [&] {
        return renameat2(AT_FDCWD, fresh.c_str(), AT_FDCWD, place.c_str(), RENAME_EXCHANGE) == 0;
    };
    if (exchange()) {
        if (unlink(fresh.c_str()) == 0)
            return {};
        const auto fault = LastError(); // a folder stood there: it comes back
        exchange();
        return fault;
    }
#endif
    return rename(fresh.c_str(), place.c_str()) == 0 ? std::error_code() : LastError();
}

std::uint64_t FileNumber(const std::filesystem::path& path)
{
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

std::error_code MayWrite(const std::filesystem::path& path)
{
    return access(path.c_str(), W_OK) == 0 || errno == ENOENT ? std::error_code() : LastError();
}

std::error_code MakeHiddenFolder(const std::filesystem::path& folder)
{
    struct stat status = {};
    if (mkdir(folder.c_str(), 0777) == 0)
        return {};
    if (errno != EEXIST || lstat(folder.c_str(), &status) != 0)
        return LastError();
    return S_ISDIR(status.st_mode) ? std::error_code()
                                   : make_error_code(std::errc::not_a_directory);
}

std::filesystem::path FoldedName(const std::filesystem::path& name)
{
    return name;
}

bool IsStream(std::string_view path)
{
    constexpr std::array<std::string_view, 3> kStreams{"/dev/stdout", "/dev/stderr", "/dev/null"};
    return path.starts_with("/dev/fd/") ||
           std::find(kStreams.begin(), kStreams.end(), path) != kStreams.end();
}

std::unique_ptr<HeldFile> HeldFile::Hold(const std::filesystem::path& path, std::error_code& error)
{
    for (;;) {
        const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
        error = descriptor < 0 ? LastError() : std::error_code();
        if (error)
            return nullptr;
        auto file = std::make_unique<PosixHeldFile>(descriptor, path);
        if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
            error = errno == EWOULDBLOCK ? make_error_code(std::errc::device_or_resource_busy)
                                         : LastError();
            return nullptr;
        }
        if (file->IsThere())
            return file;
    }
}

} // namespace morlik
