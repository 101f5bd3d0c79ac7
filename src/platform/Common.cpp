#include "base/Text.h"
#include "platform/System.h"

#include <array>
#include <clocale>
#include <cstdlib>
#include <ctime>

namespace morlik
{

std::filesystem::path ProgramFolder()
{
    const auto chosen = Environment("MORLIK_FOLDER");
    return chosen.empty() ? ExecutablePath().parent_path() : ToPath(chosen);
}

std::string ShortDate()
{
    const std::time_t now = std::time(nullptr);
    std::array<char, 64> text{};
    std::setlocale(LC_TIME, "");
    if (const std::tm* local = std::localtime(&now)) // NOLINT(concurrency-mt-unsafe)
        std::strftime(text.data(), text.size(), "%x", local);
    return text.data();
}

} // namespace morlik
