#include "platform/framework/folder_item.h"

#include <sstream>
#include <vector>

#include "platform/framework/shell.h"
#include "tests/platform/framework/on_disk.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

class FolderItems : public OnDisk {
 protected:
  FolderItems() {
    WriteFile(base / "file", "four");
    WriteFile(base / "full/old", "");
    fs::create_symlink("file", base / "to file");
    fs::create_symlink("full", base / "to folder");
    fs::create_symlink("none", base / "dangling");
  }
};

std::string PathOrNil(const Ref<FolderItem>& item) {
  return item.IsNil() ? "nil" : item->NativePath().Bytes();
}

TEST(FolderItemLookup, AcceptsAbsolutePathsAndPathsRelativeToTheBundle) {
  const std::vector<std::tuple<const char*, const char*, int, const char*>> rows = {
      {"/d/S.app/Contents/MacOS/x", "", 1, "/d"},
      {"/d/S.app/Contents/MacOS/x", "n/m//", 0, "/d/n/m"},
      {"/d/S.app/Contents/MacOS/x", "n", 1, "nil"},
      {"/d/S.app/Contents/MacOS/x", "/a/b/", 1, "/a/b"},
      {"/d/S.app/Contents/MacOS/x", "//", 0, "/"},
      // The first match counts, in any letter case; multi-byte characters count once.
      {"/\u00e9/a/cONTENTS 2/S.app/Contents/MacOS/x", "", 0, "/\u00e9"},
      {"/Contents/MacOS/x", "", 0, "/"},
      {"/d/e/x", "", 0, "/d/e"},
      {"", "n", 0, "nil"},
  };
  for (const auto& [executable, path, mode, expected] : rows) {
    QuietDesktop desktop;
    Machine machine;
    machine.executable = executable;
    const Application application(desktop, machine);
    EXPECT_EQ(PathOrNil(GetFolderItem(path, mode)), expected) << executable << " " << path;
  }
}

TEST_F(FolderItems, DescribeTheTargetOfALink) {
  const std::vector<std::pair<const char*, std::string>> rows = {
      // name; exists, is a folder, length, count, is an alias
      {"file", "1 0 4 0 0"},      {"full", "1 1 0 1 0"},     {"to file", "1 0 4 0 1"},
      {"to folder", "1 1 0 1 1"}, {"dangling", "1 0 0 0 1"}, {"none", "0 0 0 0 0"},
  };
  for (const auto& [name, expected] : rows) {
    const Ref<FolderItem> item = At(name);
    std::ostringstream answers;
    answers << item->Exists() << " " << item->Directory() << " " << item->Length() << " "
            << item->Count() << " " << item->Alias();
    EXPECT_EQ(answers.str(), expected) << name;
  }
}

TEST_F(FolderItems, ListIsASnapshotSortedByBytesWithHiddenItemsLast) {
  for (const char* name : {"\xff", "B", ".a", "a"}) {
    WriteFile(base / "full" / name, "");
  }
  fs::create_symlink("../file", base / "full/C");
  const Ref<FolderItem> folder = At("full");
  std::string names;
  for (std::int64_t i = folder->Count(); i > 0; --i) {
    const Ref<FolderItem> item = folder->Item(i);
    EXPECT_FALSE(item->Alias());
    names += item->Name().Bytes() + (folder->TrueItem(i)->Alias() ? " (link) " : " ");
    item->Delete();
  }
  EXPECT_EQ(names, ".a \xff old a C (link) B ");
  EXPECT_EQ(ReadFile(base / "file"), "four") << "only the link was to go";
  EXPECT_TRUE(folder->Item(0).IsNil() && folder->Item(7).IsNil());
  EXPECT_EQ(folder->Count(), 0);
}

TEST_F(FolderItems, ChildIsTheTargetOfALinkOrTheLinkItself) {
  const Ref<FolderItem> folder = At("");
  EXPECT_EQ(PathOrNil(folder->Child("to folder")), base / "full");
  EXPECT_EQ(PathOrNil(folder->Child("to folder", false)), base / "to folder");
  EXPECT_EQ(PathOrNil(folder->Child("dangling")), base / "dangling");
  EXPECT_EQ(PathOrNil(folder->Child("full/none/")), base / "full/none");
  EXPECT_EQ(PathOrNil(folder->Child("")), "nil");
  WriteFile(base / "caf\u00e9", "");
  EXPECT_TRUE(folder->Child(String("caf\x8e", Encoding::MacRoman))->Exists());
}

TEST_F(FolderItems, ShellPathIsOneWordForAnyName) {
  std::string every;
  for (int c = 1; c < 256; ++c) {
    every += c == '/' ? "" : std::string(1, static_cast<char>(c));
  }
  for (const std::string& name : {every, "-rf"s, "'"s, "\n"s}) {
    WriteFile(base / name, "");
    Shell shell;
    shell.Execute("printf %s " + At(name)->ShellPath() + " >" + At("out")->ShellPath());
    EXPECT_EQ(ReadFile(base / "out"), base / name);
  }
}

TEST_F(FolderItems, GrantAllRightsDoesNotFollowLinks) {
  SetRights("file", 04640);
  for (const char* name : {"to file", "dangling", "none"}) {
    At(name)->GrantAllRights();
  }
  EXPECT_EQ(Rights("file"), 04640U);
  At("file")->GrantAllRights();
  EXPECT_EQ(Rights("file"), 04777U);
}

TEST_F(FolderItems, AreWriteableIfTheUserHasPermission) {
  const PlainUser user(base);
  const std::vector<std::tuple<const char*, unsigned, bool>> rows = {
      {"file", 0400, false}, {"file", 0200, true}, {"full", 0500, false},
      {"full", 0600, false}, {"full", 0300, true}, {"to file", 0200, true},
  };
  for (const auto& [name, rights, writeable] : rows) {
    SetRights(name, rights);
    EXPECT_EQ(At(name)->IsWriteable(), writeable) << name << " " << rights;
  }
  EXPECT_FALSE(At("none")->IsWriteable());
}

}  // namespace
}  // namespace zephin::test
