#include "base/Text.h"
#include "platform/System.h"

namespace morlik
{

std::filesystem::path ProgramFolder()
{
    const auto chosen = Environment("MORLIK_FOLDER");
    return chosen.empty() ? ExecutablePath().parent_path() : ToPath(chosen);
}

} // namespace morlik
