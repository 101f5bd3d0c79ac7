#include "base/Files.h"

#include "base/Text.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace morlik
{

std::string LastReason()
{
    return errno != 0 ? std::generic_category().message(errno) : "unknown reason";
}

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

} // namespace morlik
