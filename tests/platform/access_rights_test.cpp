#include "platform/access_rights.h"

#include <gtest/gtest.h>

#include "tests/support/stub_run.h"
#include "util/my_get_folder_item.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using GlobalsVk::MyGetFolderItem;

class AccessRights : public testing::Test {
 protected:
  AccessRights() { run.BareWindow(); }
  /// A folder and a file that only their owner has any right on.
  void MakeClosed(const std::string& name) {
    WriteFile(base / name / "file", "x");
    fs::permissions(base / name / "file", fs::perms(0400));
    fs::permissions(base / name, fs::perms(0700));
  }
  unsigned RightsOf(const std::string& name) const {
    return static_cast<unsigned>(fs::status(base / name).permissions());
  }

  StubRun run;
  const fs::path base = run.scratch / "rights";
};

TEST_F(AccessRights, AreGivenToTheItemAloneWhateverItsName) {
  for (const char* name : {"plain", "two words", "it's", "$(touch \"evil\")", "`id`;\n&", "\xE9"}) {
    SCOPED_TRACE(name);
    MakeClosed(name);
    const std::string file = std::string(name) + "/file";
    ViewConst::AllUsersFullAccess(Utf8(base / name));
    EXPECT_EQ(RightsOf(name), 0777U);
    EXPECT_EQ(RightsOf(file), 0400U);
    ViewConst::AllUsersFullAccess(Utf8(base / file));
    EXPECT_EQ(RightsOf(file), 0666U);
    ViewConst::AllUsersFullAccessOnMac(MyGetFolderItem(Utf8(base / file)));
    EXPECT_EQ(RightsOf(file), 0777U);
  }
  EXPECT_FALSE(fs::exists("evil"));
}

TEST_F(AccessRights, OfAnAliasGoToItsTargetButNotFromATreeThatIsDeleted) {
  MakeClosed("folder");
  fs::create_symlink("folder/file", base / "alias");
  const Ref<FolderItem> alias = MyGetFolderItem(Utf8(base / "alias"));
  ViewConst::AllUsersFullAccessInTree(alias);
  EXPECT_EQ(RightsOf("folder/file"), 0400U);
  ViewConst::AllUsersFullAccessOnMac(alias);
  EXPECT_EQ(RightsOf("folder/file"), 0777U);
}

TEST_F(AccessRights, OfWhatIsNotThereAreSilent) {
  ViewConst::AllUsersFullAccessOnMac(nullptr);
  for (const String& path : {String(""), String("relative"), Utf8(run.scratch / "none")}) {
    ViewConst::AllUsersFullAccess(path);
    ViewConst::SetInvisible(path);
  }
  EXPECT_FALSE(fs::exists(run.scratch / "none"));
}

}  // namespace
}  // namespace zephin::test
