#include "base/Folders.h"

#include "base/Files.h"
#include "base/Text.h"

namespace morlik
{

void MakeFolder(const std::filesystem::path& folder)
{
    std::error_code fault;
    if (!folder.empty())
        std::filesystem::create_directories(folder, fault);
    if (fault)
        throw FileFailure("make the folder", FromPath(folder),
                          fault.default_error_condition().message());
}

} // namespace morlik
