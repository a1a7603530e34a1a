// The scripted host that other tests trust.
#include <gtest/gtest.h>

#include "support/ScriptedHost.h"

namespace zu::test {
namespace {

TEST(ScriptedHost, WritesBoxesDownInOrder) {
    ScriptedHost host;
    host.Message("text", "caption");
    EXPECT_FALSE(host.Ask("sure?", "Warning")) << "without a script the answer is No";
    const std::vector<ScriptedHost::Box> expected{{"text", "caption"}, {"sure?", "Warning"}};
    EXPECT_EQ(host.Boxes, expected);
}

TEST(ScriptedHost, GivesScriptedAnswersOnceEach) {
    ScriptedHost host;
    host.Answers = {true, false, true};
    EXPECT_TRUE(host.Ask("", ""));
    EXPECT_FALSE(host.Ask("", ""));
    EXPECT_TRUE(host.Ask("", ""));
    EXPECT_FALSE(host.Ask("", ""));
}

TEST(ScriptedHost, ChoosesScriptedFilesAndTakesAnEmptyOneAsCancel) {
    ScriptedHost host;
    host.Files = {"a.zu", "", "b.zu"};
    FileRequest request;
    request.InitialName = "*.ZU";
    EXPECT_EQ(host.ChooseFile(request), "a.zu");
    EXPECT_EQ(host.ChooseFile(request), std::nullopt);
    EXPECT_EQ(host.ChooseFile(request), "b.zu");
    EXPECT_EQ(host.ChooseFile(request), std::nullopt);
    ASSERT_EQ(host.Requests.size(), 4U);
    EXPECT_EQ(host.Requests[0].InitialName, "*.ZU");
}

TEST(ScriptedHost, KnowsWhichTimersRun) {
    ScriptedHost host;
    host.StartTimer(1, 30);
    host.StartTimer(2, 100);
    host.KillTimer(1);
    EXPECT_EQ(host.Timers, std::set<int>{2});
    EXPECT_EQ(host.TimerLog, (std::vector<std::string>{"start 1 30", "start 2 100", "kill 1"}));
}

TEST(ScriptedHost, MovesItsClockForward) {
    ScriptedHost host;
    const std::uint32_t before = host.TickCount();
    host.WaitNanoseconds(5e6);
    EXPECT_GE(host.TickCount() - before, 5U);
}

TEST(ScriptedHost, ThrowsWhereTheProgramWouldEnd) {
    ScriptedHost host;
    try {
        host.EndProcess(3);
    } catch (const ProcessEnded& ended) {
        EXPECT_EQ(ended.Code, 3);
        return;
    }
    FAIL() << "the process went on";
}

TEST(ScriptedHost, KeepsTitleLinesAndRemarks) {
    ScriptedHost host;
    host.SetWindowTitle("a.zu");
    host.PrintLine("ZU found");
    host.Remark("not saved");
    host.Beep();
    host.CloseMainWindow();
    EXPECT_EQ(host.Title, "a.zu");
    EXPECT_EQ(host.Lines, std::vector<std::string>{"ZU found"});
    EXPECT_EQ(host.Remarks, std::vector<std::string>{"not saved"});
    EXPECT_EQ(host.Beeps, 1);
    EXPECT_TRUE(host.Closed);
}

}  // namespace
}  // namespace zu::test
