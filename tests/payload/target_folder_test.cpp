#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/framework/session.h"
#include "platform/framework/text.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"
#include "util/paths.h"

namespace zephin::test {
namespace {

TEST(SelectTargetFolder, ReturnsThePathOrNothing) {
  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  if (access("/", W_OK) == 0) {
    // Without its separator the root folder counts as a cancel.
    run.desktop.ExpectFolderDialog("/");
    EXPECT_TRUE(window.SelectTargetFolder("/default", false).IsEmpty());
  }
  std::filesystem::permissions(run.Applications(), std::filesystem::perms(0555));
  const PlainUser user(run.scratch.Path());
  const std::vector<std::tuple<std::string, bool, std::string>> rows{
      {run.Home(), true, run.Home()},
      {"", true, ""},
      {"", false, "/default"},
      {run.Applications(), false, ""}};
  for (const auto& [chosen, emptyOnCancel, path] : rows) {
    run.desktop.ExpectFolderDialog(chosen);
    if (chosen == run.Applications()) {
      run.desktop.ExpectMessage("Cannot write to selected location.");
    }
    EXPECT_EQ(window.SelectTargetFolder("/default", emptyOnCancel).Bytes(), path) << chosen;
  }
}

TEST(SelectTargetFolder, DialogShowsThePublishersWords) {
  StubRun run;
  ZephinStubWindow& window = run.BareWindow();
  String seen;
  run.desktop.onFolderDialog = [&seen](const SelectFolderDialog& dialog) {
    seen += dialog.Title() + "," + dialog.ActionButtonCaption() + "," +
            dialog.CancelButtonCaption() + "," +
            ViewConst::MyAbsolutePath(dialog.InitialDirectory()) + ";";
  };
  run.desktop.ExpectFolderDialog("");
  (void)window.SelectTargetFolder("/default", true);
  window.fLabels = Captions({{Caption::Cancel, "No"},
                             {Caption::FolderTitle, "Where to?"},
                             {Caption::FolderSelect, "There"}});
  run.desktop.ExpectFolderDialog("");
  (void)window.SelectTargetFolder("relative", true);
  EXPECT_EQ(seen.Bytes(), ",Select,,/default;Where to?,There,No,;");
}

}  // namespace
}  // namespace zephin::test
