#pragma once

#include "cli/Commands.h"
#include "cli/Json.h"
#include "cli/QuietHost.h"

#include <functional>
#include <string>
#include <vector>

namespace morlik::cli
{

/// Number of what JSON output holds; it grows when something there changes its name or its type.
constexpr int kJsonSchema = 2;

/// What came of one file.
struct FileOutcome // NOLINT(bugprone-exception-escape): JSON moves check themselves
{
    int Status = kGood;
    std::string Text{}; ///< for standard output
    std::string Told{}; ///< for standard error
    Json Members{};     ///< the same for scripts: an object, or a list of them
    bool IsDone = false;
};

/// Gets how many percent of the work on a file are done.
using OnProg = std::function<void(float percent)>;
/// The work on the file of a number; what it throws is told as its message.
using FileWork = std::function<FileOutcome(std::size_t file, const OnProg& onProg)>;

/// Does a work on each of some files, several at a time, and prints what came of each in their
/// order: its texts, or, as JSON, all at the end or each in a line of its own. Gives the exit
/// status: that of a single file; of several, whether all were good.
int WorkOnFiles(const std::vector<std::string>& files, const ManyOptions& options,
                const Streams& streams, const FileWork& work);

/// The messages of a work on one of `options`' files, with its name above where there are others.
std::string TextOfMessages(const std::string& file, const std::vector<std::string>& messages,
                           bool isOneOfMany);

/// A broken file for standard error: a line for each of its messages.
std::string LinesOfFault(const std::string& file, const std::vector<std::string>& messages);

/// Does the work of a command on one file in a session of its own. `work` fills the outcome and
/// gives whether it was good; its messages are added.
template <class Work>
FileOutcome WorkQuietly(const std::string& file, bool isOneOfMany, const Work& work)
{
    FileOutcome outcome{.Members = {{"file", file}}};
    QuietHost host;
    Session session(host);
    if (!host.Try([&] { return work(session, outcome); }))
        outcome.Status = kFailed;
    outcome.Told += TextOfMessages(file, host.Messages, isOneOfMany);
    outcome.Members["messages"] = host.Messages;
    return outcome;
}

} // namespace morlik::cli
