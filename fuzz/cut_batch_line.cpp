// Cuts batch command lines. The paths are pieces of the line, in their order. Nothing is read or
// written, since a line may name any file.

#include "set/ReadSet.h"
#include "shell/Batch.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string line(data, data + size);
    morlik::IsBatch(line);
    const auto paths = morlik::CutBatchLine(line);
    if (!paths)
        return 0;
    morlik::GetTitle(paths->LevelWithBlank);
    const auto level = line.find(paths->LevelWithBlank);
    const auto output = line.rfind(paths->Output);
    if (paths->Output.empty() || level == std::string::npos || output == std::string::npos ||
        level + paths->LevelWithBlank.size() > output)
        std::abort();
    return 0;
}
