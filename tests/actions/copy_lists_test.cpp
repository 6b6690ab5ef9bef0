#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using Changes = std::set<std::string>;

/// A list, in which "@" stands for the machine's root; what it changes on the disk, as "path" or
/// "path=content" for what is new or different and "-path" for what is gone; and its messages.
struct Row {
  std::string list;
  Changes changes = {};
  std::vector<std::string> messages = {};
};

Changes Compare(const std::map<std::string, std::string>& before,
                const std::map<std::string, std::string>& after) {
  Changes changes;
  for (const auto& [path, content] : after) {
    const auto old = before.find(path);
    if (old == before.end() || old->second != content) {
      changes.insert(content == "/" ? path : std::string(path).append("=").append(content));
    }
  }
  for (const auto& [path, content] : before) {
    if (!after.contains(path)) {
      changes.insert("-" + path);
    }
  }
  return changes;
}

/// A machine on which "Tool" has been installed.
class InstalledMachine : public StubRun {
 public:
  InstalledMachine() {
    WriteFile(scratch / "Tool/Readme.txt", "read");
    WriteFile(scratch / "Tool/Docs/a", "a");
    WriteFile(scratch / "Tool/Docs/sub/b", "b");
    WriteFile(scratch / "there/file", "old");
    WriteFile(scratch / "there/folder/x", "x");
    fs::create_directory(scratch / "there/empty");
    WriteFile(scratch / "home/a", "the user's");
    fs::create_directory_symlink("there/folder", scratch / "link");
    BareWindow().fTargetFolder = Utf8((scratch / "Tool").string());
  }

  void SetList(std::string list) {
    for (std::size_t at = 0; (at = list.find('@', at)) != std::string::npos;) {
      list.replace(at, 1, scratch.Path().string());
    }
    BareWindow().fPostCopy = Utf8(list);
  }
};

template <class Method>
void Check(const std::vector<Row>& rows, Method method) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.list);
    InstalledMachine run;
    run.SetList(row.list);
    for (const std::string& detail : row.messages) {
      run.desktop.ExpectMessage("Install Error\n\n" + detail);
    }
    const auto before = Tree(run.scratch.Path());
    (run.BareWindow().*method)();
    EXPECT_EQ(Compare(before, Tree(run.scratch.Path())), row.changes);
  }
}

const std::string kReadFailed = "File Copy Failed: Readme.txt";
const std::string kContact = "Contact Publisher";

TEST(PostInstallCopy, CopiesOutOfTheTargetFolder) {
  Check(
      {
          {""},
          {"Readme.txt=@/there/new", {"there/new=read"}},
          {"README.txt=@/there/new", {}, {"Missing File: README.txt"}},
          {"Readme.txt=UserAccount/b", {"home/b=read"}},
          {"Readme.txt=useraccount/new/b", {"home/new", "home/new/b=read"}},
          {"Readme.txt=@/UserAccount/b", {"UserAccount", "UserAccount/b=read"}},
          {"Docs/nothing=@/there/new", {}, {"Missing File: nothing"}},
          // What follows a second "=" is dropped; a blank belongs to its field.
          {"Readme.txt=@/there/new=tail", {"there/new=read"}},
          {"Readme.txt =@/there/new", {}, {"Missing File: Readme.txt "}},
          // A file or an empty folder in the way goes; a full folder stays and is copied into.
          {"Readme.txt=@/there/file", {"there/file=read"}},
          {"Readme.txt=@/there/empty", {"there/empty=read"}},
          {"Readme.txt=@/there/folder", {}, {kReadFailed}},
          {"Docs/sub=@/there/file", {"there/file", "there/file/b=b"}},
          {"Docs/sub=@/there/folder", {"there/folder/b=b"}},
          // The order of the list is the order of work.
          {"Readme.txt=@/there/new|delete=@/there/new"},
          {"delete=@/there/file|Readme.txt={@/there/file}", {"there/file=read"}},
      },
      &ZephinStubWindow::PostInstallCopy);
}

TEST(PostInstallCopy, ConditionsDecideBeforeTheSourceIsLookedAt) {
  Check(
      {
          {"Readme.txt=[@/there]@/there/y", {"there/y=read"}},
          {"Readme.txt=[UserAccount/]@/there/y", {"there/y=read"}},
          {"Readme.txt=[@/there/file]@/there/y"},
          {"nothing=[@/nowhere]@/there/y"},
          {"nothing=[@/there]@/there/y", {}, {"Missing File: nothing"}},
          {"Readme.txt=[@/there]", {}, {kReadFailed}},
          {"Readme.txt=[@/there", {}, {kReadFailed}},
          {"Docs=[@/there]", {}, {"Folder Copy Failed: Docs"}},
          {"Readme.txt={@/there/y}", {"there/y=read"}},
          {"Readme.txt={@/there/y}tail", {"there/y=read"}},
          {"Readme.txt={@/there/y", {"there/y=read"}},
          {"Readme.txt={@/there/file}"},
          {"nothing={@/there/folder}"},
          {"Readme.txt={UserAccount/a}"},
          {"Readme.txt={UserAccount/b}", {"home/b=read"}},
          // The second answer takes the place of the first.
          {"Readme.txt=[@/nowhere]{@/there/y}", {"there/y=read"}},
          {"Readme.txt=[@/there]{@/there/file}"},
          // In this order only.
          {"Readme.txt={[@/there]@/there/y}", {}, {kReadFailed}},
      },
      &ZephinStubWindow::PostInstallCopy);
}

TEST(PostInstallCopy, DeletesQuietlyAndTellsOfEntriesThatMeanNothing) {
  Check(
      {
          {"delete=@/there/file", {"-there/file"}},
          {"DELETE=@/there/folder", {"-there/folder", "-there/folder/x"}},
          {"delete=UserAccount/a", {"-home/a"}},
          {"delete=@/link", {"-link"}},
          {"delete=@/nothing|delete=there/file|delete=a"},
          {"Delete=", {}, {kContact}},
          {"allusersfullaccess=", {}, {kContact}},
          {"allusersfullaccess=@/nothing|allusersfullaccess=there"},
          {"=@/there/new", {}, {kContact}},
          {"Readme.txt=", {}, {kContact}},
          {"Readme.txt=@/there/new|", {"there/new=read"}, {kContact}},
          {"|", {}, {kContact, kContact}},
          {"preinstalldelete=@/there/file|PreInstallCopy=@/there/file;@/b|preinstalldelete="
           "|preinstallcopy"},
      },
      &ZephinStubWindow::PostInstallCopy);
}

TEST(PostInstallCopy, FileInTheWayOfAFolderChainIsToldBeforeTheFailedCopy) {
  InstalledMachine run;
  run.SetList("Readme.txt=@/there/file/deep/new|Docs/a=@/there/a");
  run.desktop.ExpectWindow("Error Message", "Btn3");
  run.desktop.ExpectMessage("Install Error\n\n" + kReadFailed);
  run.BareWindow().PostInstallCopy();
  EXPECT_EQ(ReadFile(run.scratch / "there/file"), "old");
  EXPECT_EQ(ReadFile(run.scratch / "there/a"), "a");
}

TEST(PostInstallCopy, LinkMeansItsTargetForRightsAndItselfForDeletion) {
  InstalledMachine run;
  const auto setRights = [&run](fs::perms rights) {
    fs::permissions(run.scratch / "there/folder", rights);
  };
  const auto rights = [&run] { return fs::status(run.scratch / "there/folder").permissions(); };
  setRights(fs::perms::owner_all);
  run.SetList("AllUsersFullAccess=@/link");
  run.BareWindow().PostInstallCopy();
  EXPECT_EQ(rights(), fs::perms::all);
  setRights(fs::perms::owner_all);
  run.SetList("delete=@/link");
  run.BareWindow().PostInstallCopy();
  EXPECT_EQ(rights(), fs::perms::owner_all);
}

TEST(PreInstallCopy, ObeysItsTwoCommandsWithoutAWord) {
  Check(
      {
          {""},
          {"preinstalldelete=@/there/folder", {"-there/folder", "-there/folder/x"}},
          {"PreInstallDelete=@/there/file", {"-there/file"}},
          {"preinstalldelete=|preinstalldelete|preinstalldelete=UserAccount/a"},
          {"preinstallcopy=@/there/file;@/there/new", {"there/new=old"}},
          {"PreInstallCopy=@/there/file;@/there/new;@/tail", {"there/new=old"}},
          {"preinstallcopy=@/Tool/Docs/sub;@/there/new", {"there/new", "there/new/b=b"}},
          {"preinstallcopy=@/there/file;@/there/folder"},
          {"preinstallcopy=@/there/file;@/there/empty"},
          {"preinstallcopy=@/home/a;@/there/file"},
          {"preinstallcopy=@/nothing;@/there/new"},
          {"preinstallcopy=@/there/file;UserAccount/b"},
          {"preinstallcopy=@/there/file|preinstallcopy=|preinstallcopy"},
          {"Readme.txt=@/there/new|delete=@/there/file|allusersfullaccess=@/there|junk||="},
          {"preinstalldelete=@/there/file|preinstallcopy=@/home/a;@/there/file",
           {"there/file=the user's"}},
      },
      &ZephinStubWindow::PreInstallCopy);
}

}  // namespace
}  // namespace zephin::test
