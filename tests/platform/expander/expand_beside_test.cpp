// The expansion beside the archive: where things come to stand, and what it does when archive or
// folder are taken away under it.
#include <gtest/gtest.h>

#include <future>

#include "platform/expander/expander.h"
#include "tests/platform/expander/zip_writer.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using expander::ExpandBeside;

struct Place {
  const char* archive;
  std::vector<ZipEntry> entries;
  // Contents that stand beside the archive before.
  std::vector<std::string> standing;
  std::string placedAs;
  // What has come to stand under that name.
  Contents expected;
};

TEST(ExpandBeside, PlacesContentsBesideAndNeverIntoWhatStands) {
  const ZipEntry tool{.name = "Tool/f", .data = "x"};
  const ZipEntry companion{.name = "__MACOSX/Tool/._f", .data = "x"};
  const ZipEntry app{.name = "Tool.app/f", .data = "x"};
  const ZipEntry page{.name = "page.html", .data = "x"};
  const ZipEntry link{.name = "l", .data = "/x", .mode = kLink};
  const Contents tree{{"", "/"}, {"/f", "x"}};
  const Contents several{{"", "/"}, {"/Tool", "/"}, {"/Tool/f", "x"}, {"/page.html", "x"}};
  const std::vector<Place> rows = {
      {"a.zip", {tool, companion}, {}, "Tool", tree},
      {"a.zip", {tool}, {"Tool/old"}, "Tool 2", tree},
      {"a.zip", {tool}, {"Tool/old", "Tool 2"}, "Tool 3", tree},
      {"a.zip", {app}, {"Tool.app/old"}, "Tool 2.app", tree},
      {"My.Own.ZIP", {tool, page}, {}, "My.Own", several},
      {"a.zip", {tool, page}, {"a/old"}, "a 2", several},
      {"a", {tool, page}, {}, "a 2", several},
      {"a.zip", {page}, {}, "page.html", {{"", "x"}}},
      {"a.zip", {page}, {"page.html"}, "page 2.html", {{"", "x"}}},
      {"page.html", {page}, {}, "page 2.html", {{"", "x"}}},
      {"a.zip", {link}, {}, "l", {{"", "-> /x"}}},
      {"a.zip", {{.name = "e/", .mode = kFolder}}, {}, "e", {{"", "/"}}},
      {"a.zip", {companion}, {}, "", {}},
  };
  for (const Place& row : rows) {
    SCOPED_TRACE(std::string(row.archive) + ", as " + row.placedAs);
    const ScratchFolder scratch;
    for (const std::string& name : row.standing) {
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

// Expands a folder "Tool" with many small files in so many folders, and calls `meanwhile` as soon
// as `item` is there. Whether it was a complete expansion.
template <typename Act>
bool IsCompleteAlthough(const ScratchFolder& scratch, int folders, int files, const char* item,
                        const Act& meanwhile) {
  std::vector<ZipEntry> entries;
  for (int i = 0; i < files; ++i) {
    const std::string folder = "Tool/d" + std::to_string(i % folders) + "/";
    entries.push_back({.name = folder + std::to_string(i), .data = "x"});
  }
  WriteFile(scratch / "a.zip", MakeZip(entries));
  auto expansion = std::async(std::launch::async, ExpandBeside, (scratch / "a.zip").string());
  while (!fs::exists(scratch / item)) {
    if (expansion.wait_for(std::chrono::seconds(0)) == std::future_status::ready) {
      ADD_FAILURE() << "ended without the item";
      return false;
    }
  }
  meanwhile();
  return expansion.get().Complete();
}

TEST(ExpandBeside, GoesOnWhenTheArchiveOrOneFileIsDeleted) {
  for (const auto& [item, deleted] :
       {std::pair("Tool", "a.zip"), std::pair("Tool/d0/100", "Tool/d0/100")}) {
    const ScratchFolder scratch;
    EXPECT_TRUE(IsCompleteAlthough(scratch, 5, 2000, item,
                                   [path = scratch / deleted] { fs::remove(path); }));
    EXPECT_EQ(Tree(scratch.Path()).size(), 1 + 5 + 2000);
  }
}

// The next installer deletes the half-made folder once, and looks a little later whether it is
// gone. Before there is a file, a deletion may find nothing to delete, and nobody can notice it.
TEST(ExpandBeside, EndsAndLeavesNothingWhenItsFolderIsTakenAway) {
  for (const int folders : {1, 400}) {
    const ScratchFolder scratch;
    EXPECT_FALSE(IsCompleteAlthough(scratch, folders, 4000, "Tool/d0/0", [&] {
      std::error_code ignored;
      fs::remove_all(scratch / "Tool", ignored);
    }));
    EXPECT_FALSE(fs::exists(scratch / "Tool")) << folders;
  }
}

TEST(ExpandBeside, LeavesAFolderThatWasMovedAsItIs) {
  const ScratchFolder scratch;
  EXPECT_FALSE(IsCompleteAlthough(scratch, 400, 4000, "Tool",
                                  [&] { fs::rename(scratch / "Tool", scratch / "Moved"); }));
  EXPECT_FALSE(fs::exists(scratch / "Tool"));
  EXPECT_TRUE(fs::exists(scratch / "Moved"));
}

}  // namespace
}  // namespace zephin::test
