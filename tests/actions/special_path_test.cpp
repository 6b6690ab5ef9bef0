#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

TEST(SpecialPath, LeadingTokenBecomesAPathAndSetsTheClipboard) {
  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  window.fTargetFolder = "MyApp";
  const std::string home = run.Home();
  const std::string disk = run.Disk().string() + "/";
  struct Row {
    std::string given;
    std::string path;
    std::string clipboard = "the user's";
  };
  const std::vector<Row> rows{
      {"UserAccount/Tool", home + "/Tool", disk + "Tool"},
      {"UserAccount/", home + "/", disk},
      {"useraccount/Tools/x", home + "/Tools/x", disk + "Tools/x"},
      {"InstallFolder/Tool", run.Applications().string() + "/MyApp/Tool", disk + "Tool"},
      {"FixedPath//Library/Tool", "/Library/Tool", disk + "/Library/Tool"},
      {"FixedPath/Library/Tool", "Library/Tool", disk + "Library/Tool"},
      {"FIXEDPATH/setupfolder/x", disk + "x", disk + "x"},
      {"FixedPath/UserAccount/x", "UserAccount/x", disk + "UserAccount/x"},
      {"SetupFolder/Tool \xC3\xA9.app", disk + "Tool \xC3\xA9.app", disk + "Tool \xC3\xA9.app"},
      {"SetupFolder/SetupFolder/x", disk + "SetupFolder/x", disk + "SetupFolder/x"},
      // Without a token neither text nor clipboard changes.
      {"", ""},
      {"UserAccount", "UserAccount"},
      {"/x/UserAccount/y", "/x/UserAccount/y"},
      {" SetupFolder/x", " SetupFolder/x"},
  };
  for (const Row& row : rows) {
    run.desktop.clipboard = "the user's";
    String path = Utf8(row.given);
    EXPECT_EQ(window.SpecialPath(path), row.path != row.given) << row.given;
    EXPECT_EQ(path.Bytes(), row.path) << row.given;
    EXPECT_EQ(run.desktop.clipboard, row.clipboard) << row.given;
  }
}

}  // namespace
}  // namespace zephin::test
