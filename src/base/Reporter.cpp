#include "base/Reporter.h"

namespace morlik
{

void Reporter::LogLine(std::string_view text, std::int16_t flag)
{
    Log.Line(text, flag);
    // The log is read when something went wrong, so it must be on disk by then.
    Log.Flush();
}

void Reporter::Message(const std::string& text, const std::string& title)
{
    host_.ShowMessage(text, title);
}

void Reporter::Stop(const std::string& text, const std::string& title)
{
    Message(text, title);
    throw ProgramEnd(text);
}

} // namespace morlik
