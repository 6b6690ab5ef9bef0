// The expansion beside the archive: names of what it makes, and what it does when the archive or
// the folder is deleted or moved meanwhile.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <thread>

#include "platform/expander/expander.h"
#include "tests/platform/expander/system_calls.h"
#include "tests/platform/expander/zip_writer.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using expander::ExpandBeside;

struct Place {
  const char* archive;
  std::vector<ZipEntry> entries;
  // Items that already exist beside the archive.
  std::vector<std::string> existing;
  std::string placedAs;
  // The contents of the new item.
  Contents expected;
};

TEST(ExpandBeside, PlacesContentsUnderANameThatIsFree) {
  const ZipEntry tool{.name = "Tool/f", .data = "x"};
  const ZipEntry companion{.name = "__MACOSX/Tool/._f", .data = "x"};
  const ZipEntry app{.name = "Tool.app/f", .data = "x"};
  const ZipEntry book{.name = "Tool.book/f", .data = "x"};
  const ZipEntry hidden{.name = ".page", .data = "x"};
  const ZipEntry page{.name = "page.html", .data = "x"};
  const ZipEntry link{.name = "l", .data = "/x", .mode = kLink};
  const Contents tree{{"", "/"}, {"/f", "x"}};
  const Contents several{{"", "/"}, {"/Tool", "/"}, {"/Tool/f", "x"}, {"/page.html", "x"}};
  const std::vector<Place> rows = {
      {"a.zip", {tool, companion}, {}, "Tool", tree},
      {"a.zip", {tool}, {"Tool/old"}, "Tool 2", tree},
      {"a.zip", {tool}, {"Tool/old", "Tool 2"}, "Tool 3", tree},
      {"a.zip", {app}, {"Tool.app/old"}, "Tool 2.app", tree},
      {"a.zip", {book}, {"Tool.book/old"}, "Tool.book 2", tree},
      {".zip", {tool, page}, {}, "Archive", several},
      {"My.Own.ZIP", {tool, page}, {}, "My.Own", several},
      {"a.zip", {tool, page}, {"a/old"}, "a 2", several},
      {"a", {tool, page}, {}, "a 2", several},
      {"a.zip", {page}, {}, "page.html", {{"", "x"}}},
      {"a.zip", {page}, {"page.html"}, "page 2.html", {{"", "x"}}},
      {"page.html", {page}, {}, "page 2.html", {{"", "x"}}},
      {"a.zip", {hidden}, {".page"}, ".page 2", {{"", "x"}}},
      {"a.zip", {link}, {}, "l", {{"", "-> /x"}}},
      {"a.zip", {{.name = "e/", .mode = kFolder}}, {}, "e", {{"", "/"}}},
      {"a.zip", {companion}, {}, "", {}},
  };
  for (const Place& row : rows) {
    SCOPED_TRACE(std::string(row.archive) + ", as " + row.placedAs);
    const ScratchFolder scratch;
    for (const std::string& name : row.existing) {
      WriteFile(scratch / name, "old");
    }
    WriteFile(scratch / row.archive, MakeZip(row.entries));
    Contents expected = Tree(scratch.Path());
    for (const auto& [path, content] : row.expected) {
      expected[row.placedAs + path] = content;
    }
    const expander::Result result = ExpandBeside(scratch / row.archive);
    EXPECT_EQ(result.Line(), "");
    EXPECT_EQ(result.placedAs, row.placedAs);
    EXPECT_EQ(Tree(scratch.Path()), expected);
  }
}

TEST(ExpandBeside, FolderHasItsTimeInTheEndAndAFileThatFailsNoName) {
  constexpr std::time_t kTime = 1'600'000'001;
  const std::string exact = ExtraField(0x5455, Bytes({{1, 1}, {kTime, 4}}));
  const ScratchFolder scratch;
  WriteFile(scratch / "a.zip", MakeZip({{.name = "Tool/", .mode = kFolder, .extra = exact},
                                        {.name = "Tool/f", .data = "x"}}));
  EXPECT_EQ(ExpandBeside(scratch / "a.zip").Line(), "");
  struct stat status {};
  ASSERT_EQ(::stat((scratch / "Tool").c_str(), &status), 0);
  EXPECT_EQ(status.st_mtim.tv_sec, kTime);
  WriteFile(scratch / "a.zip", MakeZip({{.name = "f", .data = "x", .crc = 1}}));
  EXPECT_EQ(ExpandBeside(scratch / "a.zip").placedAs, "");
}

TEST(ExpandBeside, FileThatSomeoneMakesMeanwhileIsKept) {
  const std::string part = ".zephin-expanding-" + std::to_string(Crc("f"));
  const ZipEntry small{.name = "Tool/f", .data = "x"};
  const ZipEntry large{.name = "Tool/f", .data = Noise(5'000'000)};
  const ZipEntry link{.name = "Tool/f", .data = "to", .mode = kLink};
  for (const auto& [entry, noUnnamed] : {std::pair(small, false), std::pair(large, false),
                                         std::pair(large, true), std::pair(link, false)}) {
    const ScratchFolder scratch;
    WriteFile(scratch / "a.zip", MakeZip({entry}));
    SystemCalls calls;
    calls.noUnnamedFiles = noUnnamed;
    calls.before[noUnnamed ? part : "f"] = [&] { WriteFile(scratch / "Tool/f", "of the user"); };
    EXPECT_EQ(ExpandBeside(scratch / "a.zip").Line(), "Tool/f: File exists");
    EXPECT_EQ(Tree(scratch / "Tool"), (Contents{{"f", "of the user"}}));
  }
}

// An archive "a.zip" of a folder "Tool" with so many files "0", "1", ... in so many folders "d0",
// "d1", ...
std::string ZipOfTool(int folders, int files) {
  std::vector<ZipEntry> entries;
  for (int i = 0; i < files; ++i) {
    const std::string folder = "Tool/d" + std::to_string(i % folders) + "/";
    entries.push_back({.name = folder + std::to_string(i), .data = std::to_string(i)});
  }
  return MakeZip(entries);
}

// Deletes a tree like a program that lists it first, and continues when a folder isn't empty in the
// end because of what was made `meanwhile`.
void DeleteTree(
    const fs::path& tree, const std::function<void()>& meanwhile = [] {}) {
  std::vector<fs::path> listed{tree};
  if (fs::is_directory(tree)) {
    for (const auto& item : fs::recursive_directory_iterator(tree)) {
      listed.push_back(item.path());
    }
  }
  meanwhile();
  std::error_code notEmpty;
  for (auto path = listed.rbegin(); path != listed.rend(); ++path) {
    fs::remove(*path, notEmpty);
  }
}

TEST(ExpandBeside, ContentsOfManyFoldersAreRight) {
  const ScratchFolder scratch;
  WriteFile(scratch / "a.zip", ZipOfTool(400, 800));
  Contents expected;
  for (int i = 0; i < 800; ++i) {
    const std::string folder = "d" + std::to_string(i % 400);
    expected[folder] = "/";
    expected[folder + "/" + std::to_string(i)] = std::to_string(i);
  }
  EXPECT_EQ(ExpandBeside(scratch / "a.zip").Line(), "");
  EXPECT_EQ(Tree(scratch / "Tool"), expected);
}

TEST(ExpandBeside, ContinuesWhenTheArchiveOrSomethingInTheTreeIsDeleted) {
  constexpr int kFiles = 1000;
  struct Deletion {
    const char* deleted;
    std::size_t left;
    bool complete;
  };
  for (const Deletion& row : {Deletion{"a.zip", 1 + 5 + kFiles, true},
                              Deletion{"Tool/d0/0", 1 + 1 + 5 + kFiles - 1, true},
                              Deletion{"Tool/d0", 1 + 1 + 4 + kFiles / 5 * 4, false}}) {
    SCOPED_TRACE(row.deleted);
    const ScratchFolder scratch;
    WriteFile(scratch / "a.zip", ZipOfTool(5, kFiles));
    SystemCalls calls;
    calls.before["995"] = [path = scratch / row.deleted] {
      // The other thread may make files meanwhile.
      while (fs::exists(path)) {
        DeleteTree(path);
      }
    };
    EXPECT_EQ(ExpandBeside(scratch / "a.zip").Complete(), row.complete);
    EXPECT_EQ(Tree(scratch.Path()).size(), row.left);
  }
}

// The deletion lists the tree before the last files are made, and fails because of these. What the
// user has put there in the meantime is not the expander's, also under a name of its own.
TEST(ExpandBeside, EndsEarlyAndDeletesItsOwnWhenTheTreeIsDeleted) {
  const ScratchFolder scratch;
  const fs::path tool = scratch / "Tool";
  WriteFile(scratch / "a.zip", ZipOfTool(40, 4000));
  SystemCalls calls;
  calls.before["2000"] = [&] {
    DeleteTree(tool, [&] {
      // The other thread goes on.
      for (const int before = calls.made; calls.made < before + 100;) {
        std::this_thread::yield();
      }
    });
    WriteFile(tool / "d0/0", "of the user");
  };
  EXPECT_FALSE(ExpandBeside(scratch / "a.zip").Complete());
  EXPECT_EQ(Tree(tool), (Contents{{"d0", "/"}, {"d0/0", "of the user"}}));
  EXPECT_LT(calls.made, 4000);
}

// A patch is merged into the installed folder item by item, perhaps before all of it has arrived.
TEST(ExpandBeside, LeavesNoMarkerWhereItsItemsAreMoved) {
  const ScratchFolder scratch;
  WriteFile(scratch / "a.zip", ZipOfTool(5, 1000));
  SystemCalls calls;
  calls.before["995"] = [&] {
    fs::create_directory(scratch / "Taken");
    fs::rename(scratch / "Tool/.~zephin-expanding", scratch / "Taken/.~zephin-expanding");
  };
  EXPECT_TRUE(ExpandBeside(scratch / "a.zip").Complete());
  EXPECT_TRUE(fs::is_empty(scratch / "Taken"));
}

TEST(ExpandBeside, EndsEarlyWhenItsFolderIsDeletedOrMoved) {
  for (const char* const moment : {".~zephin-expanding", "d0", "0", "100"}) {
    for (const bool deleted : {true, false}) {
      SCOPED_TRACE(std::string(moment) + (deleted ? ", deleted" : ", moved"));
      const ScratchFolder scratch;
      WriteFile(scratch / "a.zip", ZipOfTool(40, 4000));
      SystemCalls calls;
      calls.before[moment] = [&] {
        if (deleted) {
          DeleteTree(scratch / "Tool");
        } else {
          fs::rename(scratch / "Tool", scratch / "Moved");
        }
      };
      const expander::Result result = ExpandBeside(scratch / "a.zip");
      EXPECT_NE(result.Line().find("was deleted or moved"), std::string::npos) << result.Line();
      EXPECT_FALSE(fs::exists(scratch / "Tool"));
      EXPECT_EQ(fs::exists(scratch / "Moved"), !deleted);
      EXPECT_FALSE(fs::exists(scratch / "Moved/.~zephin-expanding"));
      EXPECT_LT(calls.made, 4000);
    }
  }
}

// Where the system has no watch left, and where none is kept on the target.
TEST(ExpandBeside, NoticesALostFolderWithoutAWatch) {
  const ScratchFolder scratch;
  const char* const lost = "was deleted or moved";
  WriteFile(scratch / "a.zip", ZipOfTool(40, 4000));
  SystemCalls calls;
  calls.failing = {{"inotify_init1", EMFILE}};
  calls.before["100"] = [&] { fs::rename(scratch / "Tool", scratch / "Moved"); };
  EXPECT_NE(ExpandBeside(scratch / "a.zip").Line().find(lost), std::string::npos);
  const int before = calls.made;
  calls.before["100"] = [&] {
    // The other thread may make files meanwhile.
    while (fs::exists(scratch / "t")) {
      DeleteTree(scratch / "t");
    }
  };
  EXPECT_NE(expander::ExpandInto(scratch / "a.zip", scratch / "t").Line().find(lost),
            std::string::npos);
  EXPECT_LT(calls.made, before + 4000);
}

}  // namespace
}  // namespace zephin::test
