#include "base/Reporter.h"

#include "tests/support/Conversion.h"

#include <new>

namespace morlik::test
{

TEST(MessageScope, ShowsTheFirstOfAKindAndTellsOfTheRest)
{
    // Messages as a damaged level brings them up: `count` of one kind, then others.
    const auto bringUp = [](Reporter& report, int count) {
        const MessageScope scope(report);
        for (int i = 0; i < count; ++i) {
            const MessageScope inner(report);
            report.Message("Error reading texture" + std::to_string(i));
        }
        report.Message("Another", "title", "section, offset 12: a count of -1");
    };
    for (const bool logs : {true, false}) {
        const std::string rest = logs ? " more messages like these: the log has them all."
                                      : " more messages like these, not shown: no log is kept.";
        for (const int count : {20, 21, 1794}) {
            const std::size_t shown = count == 20 ? 21 : 22;
            Conversion run;
            if (logs)
                run.OpenLog();
            bringUp(run.Program.Report, count);
            const auto boxes = run.Host.Messages();
            ASSERT_EQ(boxes.size(), shown);
            EXPECT_EQ(boxes[19], "MORLIK: Error reading texture19");
            EXPECT_EQ(boxes[20], "title: Another"); // another kind counts by itself
            EXPECT_EQ(boxes.back(), count == 20
                                        ? "title: Another"
                                        : "MORLIK: There are " + std::to_string(count - 20) + rest);
            EXPECT_EQ(run.Host.Details, Strings{"section, offset 12: a count of -1"});
            bringUp(run.Program.Report, 20); // the next load begins anew
            EXPECT_EQ(run.Host.Messages().size(), shown + 21);
            if (!logs)
                continue;
            const auto lines = run.LogLines();
            for (int i = 0; i < count; ++i)
                EXPECT_EQ(lines.at(static_cast<std::size_t>(i)),
                          "Error reading texture" + std::to_string(i));
        }
    }
}

TEST(MessageScope, EndsWithTheMessageThatEndsTheProgram)
{
    ScriptedHost host;
    Reporter report(host);
    const auto end = EndOf([&] {
        const MessageScope scope(report);
        for (int i = 0; i < 30; ++i)
            report.MessageOf("Error in the ",
                             "FOE" + std::to_string(i) + "\n" + Hex(static_cast<std::uint32_t>(i)));
        report.Stop("Error in the "); // never held back
    });
    EXPECT_EQ(end, "Error in the ");
    const auto boxes = host.Messages();
    ASSERT_EQ(boxes.size(), 22U);
    EXPECT_EQ(boxes[19], "MORLIK: Error in the FOE19\\n13");
    EXPECT_PRED2(Has, boxes[20], "There are 10 more");
    EXPECT_EQ(boxes[21], "MORLIK: Error in the ");
    for (int i = 0; i < 30; ++i)
        report.Message("outside " + std::to_string(i)); // each is an answer to the user
    EXPECT_EQ(host.Messages().size(), 52U);
}

TEST(Log, KeepsEachTextInItsLine)
{
    Conversion run;
    run.OpenLog();
    run.Program.Report.LogLine("-LevelFile:two\r\nSaving WAS\x9b");
    EXPECT_EQ(run.LogLines(), Strings{"-LevelFile:two\\x0D\\nSaving WAS\\x9B"});
    EXPECT_STREQ(ReasonOf(std::bad_alloc()), "There is not enough memory");
    EXPECT_STREQ(ReasonOf(ProgramEnd("why")), "why");
}

} // namespace morlik::test
