#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

TEST(SpecialPath, TokensAtTheStartBecomePathsAndTellTheHelperItsPlaceBesideTheBundle) {
  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  window.fTargetFolder = "MyApp";
  const std::string home = run.Home();
  const std::string disk = run.Disk().string() + "/";
  struct Row {
    std::string given;
    std::string path;
    std::string clipboard;
  };
  const std::vector<Row> rows{
      {"UserAccount/Tool", home + "/Tool", disk + "Tool"},
      {"UserAccount/", home + "/", disk},
      {"useraccount/Tools/x", home + "/Tools/x", disk + "Tools/x"},
      {"InstallFolder/Tool", "/Applications/MyApp/Tool", disk + "Tool"},
      {"FixedPath//Library/Tool", "/Library/Tool", disk + "/Library/Tool"},
      {"FixedPath/Library/Tool", "Library/Tool", disk + "Library/Tool"},
      {"FIXEDPATH/setupfolder/x", disk + "x", disk + "x"},
      {"FixedPath/UserAccount/x", "UserAccount/x", disk + "UserAccount/x"},
      {"SetupFolder/Tool \xC3\xA9.app", disk + "Tool \xC3\xA9.app", disk + "Tool \xC3\xA9.app"},
      {"SetupFolder/SetupFolder/x", disk + "SetupFolder/x", disk + "SetupFolder/x"},
  };
  for (const Row& row : rows) {
    String path = Utf8(row.given);
    EXPECT_TRUE(window.SpecialPath(path)) << row.given;
    EXPECT_EQ(path.Bytes(), row.path) << row.given;
    EXPECT_EQ(run.desktop.clipboard, row.clipboard) << row.given;
  }
}

TEST(SpecialPath, AnyOtherTextLeavesItselfAndTheClipboardAlone) {
  StubRun run;
  run.desktop.clipboard = "the user's";
  for (const char* text : {"", "Tool", "UserAccount", "/x/UserAccount/y", " SetupFolder/x"}) {
    String path = text;
    EXPECT_FALSE(run.BareWindow().SpecialPath(path)) << text;
    EXPECT_EQ(path.Bytes(), text);
    EXPECT_EQ(run.desktop.clipboard, "the user's") << text;
  }
}

}  // namespace
}  // namespace zephin::test
