#include "cli/ManyFiles.h"

#include "cli/ProgressBar.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <utility>

namespace morlik::cli
{

namespace
{

/// What came of a file as a list; nothing where its turn never came.
Json ListOf(const FileOutcome& outcome)
{
    if (outcome.Members.is_array())
        return outcome.Members;
    return outcome.IsDone ? Json::array({outcome.Members}) : Json::array();
}

void PrintEvent(const Json& members, std::ostream& out)
{
    Json line{{"schema", kJsonSchema}};
    line.update(members);
    PrintJsonLine(line, out);
}

/// Carries out the works and prints each as its turn comes.
class Crew
{
public:
    Crew(const std::vector<std::string>& files, const ManyOptions& options, const Streams& streams,
         const FileWork& work)
        : files_(files),
          options_(options),
          streams_(streams),
          work_(work),
          outcomes_(files.size()),
          bar_(streams, files)
    {
    }

    std::vector<FileOutcome> Run()
    {
        auto wanted = options_.Jobs;
        if (wanted == 0 && files_.size() > 1) // to ask costs a single file too much
            wanted = std::max(1U, std::thread::hardware_concurrency());
        std::vector<std::thread> threads;
        try {
            while (threads.size() + 1 < std::min<std::size_t>(wanted, files_.size()))
                threads.emplace_back([this] { WorkGuarded(); });
        } catch (const std::system_error&) {
            // The system gives no more of them; those that there are do it too.
        }
        WorkGuarded();
        for (std::thread& thread : threads)
            thread.join();
        if (failure_)
            std::rethrow_exception(failure_);
        return std::move(outcomes_);
    }

private:
    /// What is thrown around the works, such as for want of memory, waits for the other threads.
    void WorkGuarded()
    {
        try {
            for (std::size_t i = next_++; i < files_.size() && !InterruptScope::IsRequested();
                 i = next_++)
                WorkOn(i);
        } catch (const std::exception&) {
            bar_.Around([&] { failure_ = std::current_exception(); });
        }
    }

    void WorkOn(std::size_t i)
    {
        FileOutcome outcome = TryWork(i);
        outcome.IsDone = true;
        bar_.Set(i, 100);
        bar_.Around([&] {
            outcomes_[i] = std::move(outcome);
            for (; printed_ < files_.size() && outcomes_[printed_].IsDone; ++printed_)
                Print(outcomes_[printed_]);
        });
    }

    FileOutcome TryWork(std::size_t i)
    {
        bar_.Set(i, 0);
        try {
            return work_(i, [this, i](float percent) { bar_.Set(i, percent); });
        } catch (const std::exception& failure) { // around what a `QuietHost` looks after
            const std::string message = std::string(kErrorTitle) + ": " + ReasonOf(failure);
            return {.Status = kFailed,
                    .Told = TextOfMessages(files_[i], {message}, files_.size() > 1),
                    .Members = {{"event", "failed"},
                                {"file", files_[i]},
                                {"messages", Json::array({message})}}};
        }
    }

    void Print(const FileOutcome& outcome)
    {
        if (options_.JsonLines) {
            for (const Json& members : ListOf(outcome))
                PrintEvent(members, streams_.Out);
        } else if (!options_.Json) {
            streams_.Out << outcome.Text << std::flush;
            streams_.Errors << outcome.Told << std::flush;
        }
    }

    const std::vector<std::string>& files_;
    const ManyOptions& options_;
    const Streams& streams_;
    const FileWork& work_;
    std::vector<FileOutcome> outcomes_;
    ProgressBar bar_;
    std::atomic<std::size_t> next_ = 0;
    std::size_t printed_ = 0;
    std::exception_ptr failure_;
};

} // namespace

int WorkOnFiles(const std::vector<std::string>& files, const ManyOptions& options,
                const Streams& streams, const FileWork& work)
{
    const auto outcomes = Crew(files, options, streams, work).Run();
    const auto numDone = std::ranges::count(outcomes, true, &FileOutcome::IsDone);
    const bool isWhole = std::cmp_equal(numDone, files.size());
    if (!isWhole)
        streams.Errors << "Stopped by the user: " << numDone << " of " << files.size() << ' '
                       << options.Kind << " were begun\n";
    const Json end{{"begun", numDone}, {"of", files.size()}};
    if (options.JsonLines) {
        Json event{{"event", "end"}};
        event.update(end);
        PrintEvent(event, streams.Out);
    } else if (options.Json) {
        Json all{{"schema", kJsonSchema}, {options.ListName, Json::array()}};
        for (const FileOutcome& outcome : outcomes)
            for (const Json& members : ListOf(outcome))
                all[options.ListName].push_back(members);
        all.update(end);
        PrintJson(all, streams.Out);
    }
    const auto isGood = [](const FileOutcome& outcome) { return outcome.Status == kGood; };
    if ((!isWhole || !std::ranges::all_of(outcomes, isGood)) && InterruptScope::IsRequested())
        return kStopped;
    if (outcomes.size() == 1)
        return outcomes[0].Status;
    return std::ranges::all_of(outcomes, isGood) ? kGood : kFailed;
}

std::string TextOfMessages(const std::string& file, const std::vector<std::string>& messages,
                           bool isOneOfMany)
{
    std::string text;
    if (isOneOfMany && !messages.empty())
        text = Printable(file) + ":\n";
    for (const std::string& message : messages)
        text += (isOneOfMany ? "  " : "") + PrintableLines(message) + '\n';
    return text;
}

std::string LinesOfFault(const std::string& file, const std::vector<std::string>& messages)
{
    if (messages.empty())
        return Printable(file) + ": can't be read\n";
    std::string lines;
    for (std::string message : messages) {
        std::ranges::replace(message, '\n', ' ');
        lines += Printable(file + ": " + message) + '\n';
    }
    return lines;
}

} // namespace morlik::cli
