#include <gtest/gtest.h>

#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

using testing::Test;

TEST(Startup, WholeInstallPutsThePayloadBesideTheUsersChoice) {
  StubRun run;
  WriteFile(run.scratch / "payload/Docs/Read me.txt", "hello");
  run.SetPayload(run.scratch / "payload", "Tool");
  run.record.fTargetFolder = "Tool";
  run.record.fAgreement = "Do you agree?";
  run.record.fPostInstallNotes = "<html>Thanks";
  run.record.fCompletionURL = "http://example.com/done";
  std::filesystem::create_directory(run.scratch / "Chosen");
  run.desktop.InEventLoop([&run] { run.desktop.PressInMain("InstallBtn"); });
  run.desktop.ExpectWindow("License Agreement", "OKBtn");
  run.desktop.ExpectFolderDialog(run.scratch / "Chosen");
  run.desktop.ExpectWindow("Release Notes", "ContinueBtn");

  EXPECT_EQ(run.Run(), 0);

  const std::map<std::string, std::string> expected{
      {"Tool", "/"}, {"Tool/Docs", "/"}, {"Tool/Docs/Read me.txt", "hello"}};
  EXPECT_EQ(Tree(run.scratch / "Chosen"), expected);
  EXPECT_EQ(run.desktop.opened, std::vector<std::string>{"http://example.com/done"});
  EXPECT_TRUE(run.desktop.failures.empty());
}

}  // namespace
}  // namespace zephin::test
