#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

constexpr std::int64_t kSecond = 1000;

TEST(ExecuteBefore, AnswersAreReadOnceASecond) {
  struct Row {
    std::vector<std::pair<std::int64_t, std::string>> replies;  ///< Milliseconds after the start.
    std::string message;
    bool goOn;
    std::int64_t seconds;
    std::string token = {};
  };
  const std::string wait = "ZephinInstallWait";
  const std::vector<Row> rows{
      // No answer after three seconds.
      {{}, "", true, 3},
      {{{3500, "ZephinInstallAbort:late"}}, "", true, 3},
      // An answer is read one second later, however early it arrives.
      {{{100, "ZephinInstallDone:"}}, "", true, 4},
      {{{100, "ZephinInstallDone:x"}}, "", true, 4},
      {{{2900, "zephininstalldone:xy"}}, "xy", true, 4},
      {{{100, "ZephinInstallAbort:"}}, "", false, 4},
      {{{100, "ZEPHININSTALLABORT:x"}}, "x", false, 4},
      // A wait is checked once a second without a limit; any other text ends it.
      {{{100, wait}, {3500, "ZephinInstallAbort:x\n y"}}, "x\n y", false, 4},
      {{{100, "zephininstallwait"}, {5500, "ZephinInstallDone:ok"}}, "ok", true, 6},
      {{{100, wait}, {600 * kSecond, "ZephinInstallDone:ok"}}, "ok", true, 600},
      {{{100, wait}, {5500, ""}}, "", true, 6},
      {{{100, wait + " "}}, "", true, 4},
      {{{100, wait + "\n"}}, "", true, 4},
      {{{100, " ZephinInstallAbort:x"}}, "", true, 4},
      {{{100, "ZephinInstallAbort"}}, "", true, 4},
      // A helper named with a token finds its path on the clipboard. If that is still there later,
      // it counts as an answer.
      {{}, "", true, 4, "SetupFolder/"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.replies.empty() ? "no reply" : row.replies.back().second);
    StubRun run;
    ZephinStubWindow& window = run.BareWindow();
    window.fExecuteBeforeName = Utf8(row.token + "helper");
    const std::filesystem::path folder = row.token.empty() ? run.Resources() : run.Disk();
    WriteFile(folder / "helper", "");
    run.desktop.clipboard = "the user's";
    run.desktop.onLaunch = [&](const std::string& path) {
      EXPECT_EQ(path, folder / "helper");
      EXPECT_EQ(run.desktop.clipboard, row.token.empty() ? "" : path);
      for (const auto& [time, text] : row.replies) {
        run.desktop.After(time, [&, time = time, text = text] {
          EXPECT_EQ(window.Visible(), row.seconds * kSecond < time);
          run.desktop.clipboard = text;
        });
      }
    };
    if (!row.message.empty()) {
      run.desktop.ExpectMessage(row.message);
    }
    EXPECT_EQ(window.DoExecuteBefore(), row.goOn);
    // Each check takes a tick more than a second, so a long wait can end up to a second late.
    EXPECT_GE(run.desktop.milliseconds, row.seconds * kSecond);
    EXPECT_LT(run.desktop.milliseconds, row.seconds * kSecond + (row.seconds > 9 ? 1100 : 200));
    EXPECT_TRUE(window.Visible());
    EXPECT_EQ(run.desktop.bringToFrontCalls, row.goOn ? 1 : 0);
    EXPECT_EQ(run.desktop.launched.size(), 1U);
  }
}

TEST(ExecuteBefore, WithoutANameNothingChanges) {
  StubRun run;
  run.desktop.clipboard = "the user's";
  EXPECT_TRUE(run.BareWindow().DoExecuteBefore());
  EXPECT_EQ(run.desktop.clipboard, "the user's");
  EXPECT_EQ(run.desktop.milliseconds, 0);
}

TEST(ExecuteBefore, OnlyAMissingHelperNamedWithATokenCostsNoTime) {
  for (const auto& [name, seconds] : {std::pair{"SetupFolder/none", 0}, {"none", 3}}) {
    StubRun run;
    ZephinStubWindow& window = run.BareWindow();
    window.fExecuteBeforeName = name;
    EXPECT_TRUE(window.DoExecuteBefore());
    EXPECT_NEAR(static_cast<double>(run.desktop.milliseconds), 1000.0 * seconds, 100) << name;
    EXPECT_EQ(run.desktop.launched.empty(), seconds == 0) << name;
    EXPECT_TRUE(window.Visible());
  }
}

TEST(ExecuteBefore, QuitEndsAnEndlessWait) {
  StubRun run;
  run.record.fTargetFolder = "Tool";
  run.record.fExecuteBeforeName = "helper";
  run.desktop.onLaunch = [&run](const std::string&) {
    run.desktop.clipboard = "ZephinInstallWait";
  };
  run.desktop.After(100 * kSecond, [] { Quit(0); });
  EXPECT_EQ(run.Run(), 0);
}

}  // namespace
}  // namespace zephin::test
