#pragma once

#include "base/Host.h"

#include <deque>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace morlik::test
{

using Strings = std::vector<std::string>;

/// Answers a dialog with the next name; an empty one, or none left, is a cancel.
inline void TakeAnswer(FileDialog& dialog, std::deque<std::string>& answers)
{
    if (answers.empty())
        return;
    if (!answers.front().empty())
        dialog.FileName = answers.front();
    answers.pop_front();
}

/// A Host that answers what a test has set and records every call in order, but for the turns,
/// which are counted.
class ScriptedHost : public Host
{
public:
    bool SkyFixTicked = false;
    bool ExpSprTicked = false;
    std::filesystem::path Folder; ///< the program's
    std::filesystem::path State;  ///< the user's
    std::string Date = "24.11.2026";
    std::string CaptionText;
    std::deque<std::string> OpenAnswers;
    std::deque<std::string> SaveAnswers;
    std::deque<bool> Answers; ///< to questions; none left is a yes

    /// Such as "message: TITLE: TEXT", "ask: TITLE: TEXT", "event: TEXT", "prog: 12.5", "open:
    /// FILTER in FOLDER".
    std::vector<std::string> Calls;
    int Turns = 0;
    int TurnsToStop = std::numeric_limits<int>::max(); ///< the user asks to stop after so many
    std::vector<std::string> Details;                  ///< of the failures among the messages
    std::vector<std::string> Hints;

    /// The message boxes alone, each as "TITLE: TEXT".
    std::vector<std::string> Messages() const
    {
        const std::string kind = "message: ";
        std::vector<std::string> messages;
        for (const std::string& call : Calls)
            if (call.starts_with(kind))
                messages.push_back(call.substr(kind.size()));
        return messages;
    }

    void ShowMessage(const std::string& text, const std::string& title) override
    {
        Calls.push_back("message: " + title + ": " + text);
    }
    void ShowFailure(const std::string& text, const std::string& title,
                     const std::string& detail) override
    {
        ShowMessage(text, title);
        Details.push_back(detail);
    }
    void ShowHint(const std::string& text) override { Hints.push_back(text); }
    bool Ask(const std::string& question, const std::string& title) override
    {
        Calls.push_back("ask: " + title + ": " + question);
        const bool answer = Answers.empty() || Answers.front();
        if (!Answers.empty())
            Answers.pop_front();
        return answer;
    }
    void ShowOpen(FileDialog& dialog) override { Answer("open: ", dialog, OpenAnswers); }
    void ShowSave(FileDialog& dialog) override { Answer("save: ", dialog, SaveAnswers); }
    void ShowFolder(FileDialog& dialog) override { Answer("folder: ", dialog, SaveAnswers); }
    void SetEvent(const std::string& text) override { Calls.push_back("event: " + text); }
    void SetProg(float percent) override
    {
        std::ostringstream text;
        text << "prog: " << percent;
        Calls.push_back(text.str());
    }
    void GiveTurn() override { ++Turns; }
    bool StopRequested() const override { return Turns >= TurnsToStop; }
    std::string Caption() const override { return CaptionText; }
    void SetCaption(const std::string& text) override
    {
        Calls.push_back("caption: " + text);
        CaptionText = text;
    }
    void Beep() override { Calls.emplace_back("beep"); }
    void OpenWebAddress(const std::string& address) override { Calls.push_back("web: " + address); }
    bool SkyFix() const override { return SkyFixTicked; }
    bool ExpSpr() const override { return ExpSprTicked; }
    std::filesystem::path ProgramFolder() const override { return Folder; }
    std::filesystem::path StateFolder() const override { return State; }
    std::string ShortDate() const override { return Date; }

private:
    void Answer(const std::string& kind, FileDialog& dialog, std::deque<std::string>& answers)
    {
        Calls.push_back(kind + dialog.Filter + " in " + dialog.Folder);
        TakeAnswer(dialog, answers);
    }
};

} // namespace morlik::test
