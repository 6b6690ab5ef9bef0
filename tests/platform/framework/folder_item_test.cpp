#include "platform/framework/folder_item.h"

#include <vector>

#include "platform/framework/shell.h"
#include "tests/platform/framework/on_disk.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

class FolderItems : public OnDisk {
 protected:
  FolderItems() {
    WriteFile(base / "file", "four");
    WriteFile(base / "full/old", "");
    fs::create_directory(base / "empty");
    fs::create_symlink("file", base / "to file");
    fs::create_symlink("full", base / "to folder");
    fs::create_symlink("none", base / "dangling");
  }
};

std::string PathOrNil(const Ref<FolderItem>& item) {
  return item.IsNil() ? "nil" : item->NativePath().Bytes();
}

TEST(FolderItemLookup, TakesFullPathsAndNamesBesideTheBundle) {
  const std::vector<std::tuple<const char*, const char*, int, const char*>> rows = {
      {"/d/S.app/Contents/MacOS/x", "", 1, "/d"},
      {"/d/S.app/Contents/MacOS/x", "n/m//", 0, "/d/n/m"},
      {"/d/S.app/Contents/MacOS/x", "n", 1, "nil"},
      {"/d/S.app/Contents/MacOS/x", "/a/b/", 1, "/a/b"},
      {"/d/S.app/Contents/MacOS/x", "//", 0, "/"},
      // The first place decides, in any letter case, and letters of several bytes count once.
      {"/\u00e9/a/cONTENTS 2/S.app/Contents/MacOS/x", "", 0, "/\u00e9"},
      {"/Contents/MacOS/x", "", 0, "/"},
      {"/d/e/x", "", 0, "/d/e"},
      {"", "", 0, "nil"},
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

TEST_F(FolderItems, AnswerForWhatALinkPointsTo) {
  const std::vector<std::tuple<const char*, bool, bool, std::int64_t, std::int64_t, bool>> rows = {
      // name, Exists, Directory, Length, Count, Alias
      {"file", true, false, 4, 0, false},    {"full", true, true, 0, 1, false},
      {"to file", true, false, 4, 0, true},  {"to folder", true, true, 0, 1, true},
      {"dangling", true, false, 0, 0, true}, {"none", false, false, 0, 0, false},
  };
  for (const auto& [name, exists, directory, length, count, alias] : rows) {
    const Ref<FolderItem> item = At(name);
    EXPECT_EQ(item->Exists(), exists) << name;
    EXPECT_EQ(item->Directory(), directory) << name;
    EXPECT_EQ(item->Length(), length) << name;
    EXPECT_EQ(item->Count(), count) << name;
    EXPECT_EQ(item->Alias(), alias) << name;
  }
}

TEST_F(FolderItems, ListIsOneSnapshotInTheOrderOfTheBytes) {
  for (const char* name : {"\xff", "B", ".a", "a"}) {
    WriteFile(base / "full" / name, "");
  }
  fs::create_symlink("../file", base / "full/C");
  const Ref<FolderItem> folder = At("full");
  std::string names;
  std::string aliases;
  for (std::int64_t i = folder->Count(); i > 0; --i) {
    names += folder->Item(i)->Name().Bytes() + " ";
    aliases += folder->TrueItem(i)->Alias() ? "link " : "";
    EXPECT_FALSE(folder->Item(i)->Alias());
    folder->Item(i)->Delete();
  }
  EXPECT_EQ(names, "\xff old a C B .a ");
  EXPECT_EQ(aliases, "link ");
  EXPECT_EQ(ReadFile(base / "file"), "four") << "only the link was to go";
  EXPECT_EQ(PathOrNil(folder->Item(0)), "nil");
  EXPECT_EQ(PathOrNil(folder->Item(7)), "nil");
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

TEST_F(FolderItems, ShellPathIsOneWordWhateverTheNameHolds) {
  std::string name;
  for (int c = 1; c < 256; ++c) {
    name += c == '/' ? "" : std::string(1, static_cast<char>(c));
  }
  for (const std::string& each : {name, std::string("-rf"), std::string("'"), std::string("\n")}) {
    WriteFile(base / each, "");
    Shell shell;
    shell.Execute("printf %s " + At(each)->ShellPath() + " >" + At("out")->ShellPath());
    EXPECT_EQ(ReadFile(base / "out"), base / each);
  }
}

TEST_F(FolderItems, AllRightsAreAddedToTheItemButNeverThroughALink) {
  SetRights("file", 04640);
  SetRights("full", 0700);
  for (const char* name : {"to file", "dangling", "none", "full"}) {
    At(name)->GrantAllRights();
  }
  EXPECT_EQ(Rights("file"), 04640U);
  EXPECT_EQ(Rights("full"), 0777U);
  At("file")->GrantAllRights();
  EXPECT_EQ(Rights("file"), 04777U);
}

TEST_F(FolderItems, AreWriteableAsFarAsTheUserMay) {
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
