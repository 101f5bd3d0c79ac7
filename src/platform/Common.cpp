#include "base/Text.h"
#include "platform/System.h"

namespace morlik
{

std::filesystem::path ProgramFolder()
{
    const auto chosen = Environment("MORLIK_FOLDER");
    if (!chosen.empty())
        return ToPath(chosen);
    static const auto kOwn = ExecutablePath().parent_path();
    return kOwn;
}

} // namespace morlik
