// What commands for many files show while they work, and of work that fails.

#include "cli/ManyFiles.h"

#include "cli/Columns.h"
#include "cli/ProgressBar.h"
#include "platform/Platform.h"
#include "tests/cli/RunCli.h"

#include <csignal>

namespace morlik::test
{

TEST(ProgressBar, FitsTheLineAndNamesWhatItDoes)
{
    std::ostringstream out;
    std::ostringstream errors;
    const auto drawn = [&errors] { return std::exchange(errors, {}).str(); };
    for (const std::size_t columns : {4U, 20U, 30U, 50U, 80U, 200U}) {
        const cli::Streams streams{out, errors, true, columns};
        const Strings names{"folder/a.tr4", "folder/\u57ce l\u00f6we with a long name.tr4"};
        cli::ProgressBar bar(streams, names);
        bar.Set(1, 50);
        const std::string line = drawn();
        EXPECT_LT(cli::Width(line), columns + 1) << line; // a '\r' stands before it
        if (columns == 200) {
            EXPECT_EQ(line, "\r[" + std::string(10, '#') + std::string(30, ' ') +
                                "] 25 %  0 of 2  \u57ce l\u00f6we with a long name.tr4");
        } else if (columns == 50) {
            EXPECT_TRUE(line.ends_with("  0 of 2  e with a long name.tr4")) << line;
        } else if (columns == 30) {
            EXPECT_TRUE(line.ends_with("  0 of 2")) << line;
        }
        bar.Set(1, 40); // a save goes back to 0 at its end
        EXPECT_EQ(drawn(), "");
        bar.Around([&errors] { errors << "text"; });
        const std::string wiped = '\r' + std::string(cli::Width(line) - 1, ' ') + '\r';
        EXPECT_EQ(drawn(), wiped + "text" + line);
        bar.Set(1, 100);
        bar.Set(0, 100);
        bar.Around([] {});
        drawn();
        bar.Around([] {});
        EXPECT_EQ(drawn(), "") << "nothing is left to show";
    }
    const Strings name{"a.tr4"};
    cli::ProgressBar({out, errors, false}, name).Set(0, 50);
    EXPECT_EQ(drawn(), "");
}

TEST(WorkOnFiles, TellsWhatAWorkThrowsAndGoesOn)
{
    std::ostringstream out;
    std::ostringstream errors;
    const auto work = [](std::size_t file, const cli::OnProg&) {
        if (file == 0)
            throw std::bad_alloc();
        return cli::FileOutcome{.Text = "good\n"};
    };
    const cli::Streams streams{out, errors, false};
    EXPECT_EQ(cli::WorkOnFiles({"a", "b"}, {}, streams, work), cli::kFailed);
    EXPECT_EQ(out.str(), "good\n");
    EXPECT_PRED2(Has, errors.str(), "a:\n  MORLIK error: There is not enough memory\n");
    cli::ManyOptions lines;
    lines.JsonLines = true;
    EXPECT_EQ(cli::WorkOnFiles({"a"}, lines, streams, work), cli::kFailed);
    EXPECT_PRED2(Has, out.str(),
                 R"({"schema":2,"event":"failed","file":"a","messages":["MORLIK error: )");
}

#ifndef _WIN32 // where Ctrl+C is no signal
TEST(WorkOnFiles, EndsAtARequestAndTellsWhatWasBegun)
{
    std::ostringstream out;
    std::ostringstream errors;
    cli::ManyOptions options;
    options.Kind = "sets";
    {
        const InterruptScope interrupts;
        const auto work = [](std::size_t, const cli::OnProg&) {
            raise(SIGINT);
            return cli::FileOutcome();
        };
        const cli::Streams streams{out, errors, false};
        EXPECT_EQ(cli::WorkOnFiles({"a", "b"}, options, streams, work), cli::kStopped);
    }
    const InterruptScope forgets;
    EXPECT_EQ(errors.str(), "Stopped by the user: 1 of 2 sets were begun\n");
}
#endif

} // namespace morlik::test
