#include "base/Text.h"
#include "platform/System.h"

#include <system_error>

namespace morlik
{

namespace
{

/// That of the executable; for a copy of an installed tree that took the files for the links in
/// `bin`, the one that they led to.
std::filesystem::path OwnFolder()
{
    const auto own = ExecutablePath().parent_path();
    const auto installed = own.parent_path() / "lib" / "morlik";
    std::error_code failure;
    return std::filesystem::is_directory(installed, failure) ? installed : own;
}

} // namespace

std::filesystem::path ProgramFolder()
{
    const auto chosen = Environment("MORLIK_FOLDER");
    if (!chosen.empty())
        return ToPath(chosen);
    static const auto kOwn = OwnFolder();
    return kOwn;
}

} // namespace morlik
