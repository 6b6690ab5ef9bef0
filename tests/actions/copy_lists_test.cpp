#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/stub_run.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::test {
namespace {

/// A copy list, in which "@" is the scratch folder. `changes` has the changed items in the words of
/// TreeWords, with "-" before deleted ones.
struct Row {
  std::string list;
  std::string changes = {};
  std::vector<std::string> messages = {};
  bool hasErrorWindow = false;  ///< Before the messages.
};

/// A machine on which "Tool" has been installed.
class InstalledMachine : public StubRun {
 public:
  InstalledMachine() {
    make_setup::MakeTree(scratch.Path(),
                         "Tool/Readme.txt=read Tool/Docs/a=a Tool/Docs/sub/b=b there/file=old "
                         "there/folder/x=x there/empty/ home/a=mine link->there/folder");
    BareWindow().fTargetFolder = Utf8((scratch / "Tool").string());
  }

  void SetList(std::string list) {
    for (std::size_t at = 0; (at = list.find('@', at)) != std::string::npos;) {
      list.replace(at, 1, scratch.Path().string());
    }
    BareWindow().fPostCopy = Utf8(list);
  }
  std::set<std::string> Words() const {
    std::istringstream tree(make_setup::TreeWords(scratch.Path()));
    return {std::istream_iterator<std::string>(tree), {}};
  }
};

void Check(void (ZephinStubWindow::*method)(), const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.list);
    InstalledMachine run;
    run.SetList(row.list);
    if (row.hasErrorWindow) {
      run.desktop.ExpectWindow("Error Message", "Btn3");
    }
    for (const std::string& detail : row.messages) {
      run.desktop.ExpectMessage("Install Error\n\n" + detail);
    }
    const std::set<std::string> before = run.Words();
    (run.BareWindow().*method)();
    const std::set<std::string> after = run.Words();
    std::string changes;
    for (const std::string& word : after) {
      changes += before.contains(word) ? "" : word + " ";
    }
    for (const std::string& word : before) {
      changes += after.contains(word) ? "" : "-" + word + " ";
    }
    EXPECT_EQ(changes, row.changes.empty() ? "" : row.changes + " ");
  }
}

const std::string kReadFailed = "File Copy Failed: Readme.txt";
const std::string kContact = "Contact Publisher";

TEST(PostInstallCopy, CopiesOutOfTheTargetFolder) {
  Check(&ZephinStubWindow::PostInstallCopy,
        {
            {"Readme.txt=@/there/new", "there/new=read"},
            {"README.txt=@/there/new", "", {"Missing File: README.txt"}},
            {"Readme.txt=UserAccount/b", "home/b=read"},
            {"Readme.txt=useraccount/new/b", "home/new/ home/new/b=read"},
            {"Readme.txt=@/UserAccount/b", "UserAccount/ UserAccount/b=read"},
            // A missing source changes nothing at the destination.
            {"Docs/nothing=@/there/file", "", {"Missing File: nothing"}},
            {"nothing=@/deep/new", "", {"Missing File: nothing"}},
            // Text after a second "=" is dropped; a space belongs to its field.
            {"Readme.txt=@/there/new=tail", "there/new=read"},
            {"Readme.txt =@/there/new", "", {"Missing File: Readme.txt "}},
            // A file or an empty folder in the way is deleted; a full folder is copied into.
            {"Readme.txt=@/there/file", "there/file=read -there/file=old"},
            {"Readme.txt=@/there/empty", "there/empty=read -there/empty/"},
            {"Readme.txt=@/there/folder", "", {kReadFailed}},
            {"Docs/sub=@/there/file", "there/file/ there/file/b=b -there/file=old"},
            {"Docs/sub=@/there/folder", "there/folder/b=b"},
            {"Readme.txt=@/there/file/deep/new|Docs/a=@/there/a", "there/a=a", {kReadFailed}, true},
            // Commands run in the order of the list.
            {"Readme.txt=@/there/new|delete=@/there/new"},
            {"delete=@/there/file|Readme.txt={@/there/file}", "there/file=read -there/file=old"},
        });
}

TEST(PostInstallCopy, ConditionsAreTestedBeforeTheSource) {
  Check(&ZephinStubWindow::PostInstallCopy,
        {
            {"Readme.txt=[@/there]@/there/y", "there/y=read"},
            {"Readme.txt=[UserAccount/]@/there/y]tail", "there/y=read"},
            {"Readme.txt=[@/there/file]@/there/y"},
            {"nothing=[@/nowhere]@/there/y"},
            {"nothing=[@/there]@/there/y", "", {"Missing File: nothing"}},
            {"Readme.txt=[@/there]", "", {kReadFailed}},
            {"Readme.txt=[@/there", "", {kReadFailed}},
            {"Docs=[@/there]", "", {"Folder Copy Failed: Docs"}},
            {"Readme.txt={@/there/y}", "there/y=read"},
            {"Readme.txt={@/there/y}tail", "there/y=read"},
            {"Readme.txt={@/there/y", "there/y=read"},
            {"Readme.txt={@/there/file}"},
            {"nothing={@/there/folder}"},
            {"Readme.txt={UserAccount/a}"},
            {"Readme.txt={UserAccount/b}", "home/b=read"},
            // The second condition replaces the first.
            {"Readme.txt=[@/nowhere]{@/there/y}", "there/y=read"},
            {"Readme.txt=[@/there]{@/there/file}"},
            // Only in this order.
            {"Readme.txt={[@/there]@/there/y}", "", {kReadFailed}},
        });
}

TEST(PostInstallCopy, DeletesSilentlyAndReportsMalformedEntries) {
  Check(&ZephinStubWindow::PostInstallCopy,
        {
            {"delete=@/there/file", "-there/file=old"},
            {"DELETE=@/there/folder", "-there/folder/ -there/folder/x=x"},
            {"delete=UserAccount/a", "-home/a=mine"},
            {"delete=@/link", "-link->there/folder"},
            {"delete=@/nothing|delete=there/file|delete=a"},
            {"Delete=", "", {kContact}},
            {"allusersfullaccess=", "", {kContact}},
            {"allusersfullaccess=@/nothing|allusersfullaccess=there"},
            {"=@/there/new", "", {kContact}},
            {"Readme.txt=", "", {kContact}},
            {"Readme.txt=@/there/new|", "there/new=read", {kContact}},
            {"|", "", {kContact, kContact}},
            {"preinstalldelete=@/there/file|PreInstallCopy=@/there/file;@/b|preinstalldelete="
             "|preinstallcopy"},
        });
}

TEST(PostInstallCopy, RightsGoToALinksTargetAndDeletionToTheLink) {
  using std::filesystem::perms;
  InstalledMachine run;
  const auto folder = run.scratch / "there/folder";
  for (const auto& [command, rights] :
       {std::pair{"AllUsersFullAccess=@/link", perms::all}, {"delete=@/link", perms::owner_all}}) {
    std::filesystem::permissions(folder, perms::owner_all);
    run.SetList(command);
    run.BareWindow().PostInstallCopy();
    EXPECT_EQ(std::filesystem::status(folder).permissions(), rights) << command;
  }
}

TEST(PreInstallCopy, RunsItsTwoCommandsSilently) {
  Check(&ZephinStubWindow::PreInstallCopy,
        {
            {"preinstalldelete=@/there/folder", "-there/folder/ -there/folder/x=x"},
            {"PreInstallDelete=@/there/file", "-there/file=old"},
            {"preinstalldelete=|preinstalldelete|preinstalldelete=UserAccount/a"},
            {"preinstallcopy=@/there/file;@/there/new", "there/new=old"},
            {"PreInstallCopy=@/there/file;@/there/new;@/tail", "there/new=old"},
            {"preinstallcopy=@/Tool/Docs/sub;@/there/new", "there/new/ there/new/b=b"},
            {"preinstallcopy=@/there/file;@/there/folder"},
            {"preinstallcopy=@/home/a;@/there/file"},
            {"preinstallcopy=@/nothing;@/there/new"},
            {"preinstallcopy=@/there/file;UserAccount/b"},
            {"preinstallcopy=@/there/file|preinstallcopy=|preinstallcopy"},
            {"Readme.txt=@/there/new|delete=@/there/file|allusersfullaccess=@/there|junk||="},
            {"preinstalldelete=@/there/file|preinstallcopy=@/home/a;@/there/file",
             "there/file=mine -there/file=old"},
        });
}

}  // namespace
}  // namespace zephin::test
