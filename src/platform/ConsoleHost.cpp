#include "platform/ConsoleHost.h"

#include "base/Text.h"
#include "platform/Platform.h"

namespace morlik
{

void ConsoleHost::ShowMessage(const std::string& text, const std::string& title)
{
    messages_ << PrintableLines(title + ": " + text) << std::endl;
}

void ConsoleHost::ShowOpen(FileDialog& dialog)
{
    if (!choices_.MainSFX.empty())
        dialog.FileName = choices_.MainSFX;
}

std::filesystem::path ConsoleHost::ProgramFolder() const
{
    return morlik::ProgramFolder();
}

std::filesystem::path ConsoleHost::StateFolder() const
{
    return morlik::StateFolder();
}

std::string ConsoleHost::ShortDate() const
{
    return morlik::ShortDate();
}

} // namespace morlik
