#include "base/Reporter.h"

#include "base/Text.h"

#include <new>
#include <utility>

namespace morlik
{

namespace
{

/// A text without its numbers.
std::string KindOf(const std::string& text)
{
    std::string kind = text;
    std::erase_if(kind, [](char c) { return c >= '0' && c <= '9'; });
    return kind;
}

} // namespace

const char* ReasonOf(const std::exception& failure)
{
    if (dynamic_cast<const std::bad_alloc*>(&failure) != nullptr)
        return "There is not enough memory";
    return failure.what();
}

void Reporter::LogLine(std::string_view text, std::int16_t flag)
{
    if (deferred_ != nullptr)
        return deferred_->Add([this, line = std::string(text), flag] { LogLine(line, flag); });
    Log.Line(Printable(text), flag);
    // The log is read when something went wrong, so it must be on disk by then.
    Log.Flush();
}

void Reporter::Message(const std::string& text, const std::string& title, const std::string& detail)
{
    Show(KindOf(text), text, title, detail);
}

void Reporter::MessageOf(const std::string& text, const std::string& name)
{
    Show(text, text + Printable(name), kAppTitle, {});
}

void Reporter::Hint(const std::string& text)
{
    LogLine(text);
    Tell([this, text] { host_.ShowHint(text); });
}

void Reporter::Stop(const std::string& text, const std::string& title, const std::string& detail)
{
    Tell([=, this] {
        TellHeldBack();
        LogMessage(text, detail);
        ShowBox(text, title, detail);
    });
    throw ProgramEnd(text);
}

void Reporter::Tell(const std::function<void()>& tell)
{
    if (deferred_ != nullptr)
        deferred_->Add(tell);
    else
        tell();
}

void Reporter::Show(const std::string& kind, const std::string& text, const std::string& title,
                    const std::string& detail)
{
    if (deferred_ != nullptr)
        return deferred_->Add([=, this] { Show(kind, text, title, detail); });
    LogMessage(text, detail);
    if (scopes_ != 0 && ++told_[kind] > MessageScope::kMostOfAKind)
        ++heldBack_;
    else
        ShowBox(text, title, detail);
}

void Reporter::LogMessage(const std::string& text, const std::string& detail)
{
    if (!detail.empty())
        LogLine(detail);
    if (scopes_ != 0)
        LogLine(text);
}

void Reporter::ShowBox(const std::string& text, const std::string& title, const std::string& detail)
{
    if (detail.empty())
        host_.ShowMessage(text, title);
    else
        host_.ShowFailure(text, title, detail);
}

void Reporter::TellHeldBack()
{
    if (heldBack_ == 0)
        return;
    const auto text = "There are " + std::to_string(heldBack_) + " more messages like these";
    heldBack_ = 0;
    host_.ShowMessage(
        text + (Log.IsOpen() ? ": the log has them all." : ", not shown: no log is kept."),
        kAppTitle);
}

MessageScope::~MessageScope()
{
    if (--report_.scopes_ != 0)
        return;
    try {
        report_.told_.clear();
        report_.TellHeldBack();
    } catch (const std::exception&) {
        // What ends the scope by an exception is told at its edge.
        report_.heldBack_ = 0;
    }
}

DeferredReports::DeferredReports(Reporter& report) : report_(report)
{
    report_.deferred_ = this;
}

void DeferredReports::End()
{
    if (report_.deferred_ == this)
        report_.deferred_ = nullptr;
}

void DeferredReports::Tell()
{
    End();
    wasTold_ = true;
    for (const auto& tell : std::exchange(reports_, {}))
        tell();
}

void DeferredReports::Add(std::function<void()> tell)
{
    reports_.push_back(std::move(tell));
    if (reports_.size() >= kMost)
        Tell();
}

} // namespace morlik
