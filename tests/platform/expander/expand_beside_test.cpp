// The expansion beside the archive: where things come to stand, and what it does when archive or
// folder are taken away under it.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/expander/expander.h"
#include "tests/platform/expander/scratch.h"
#include "tests/platform/expander/zip_writer.h"

namespace zephin::expander::test {
namespace {

namespace fs = std::filesystem;

struct PlaceCase {
  const char* name;
  const char* archive;
  std::vector<ZipEntry> entries;
  // Files that stand beside the archive before.
  std::vector<std::string> standing;
  const char* placedAs;
  // What has come to stand beside the archive.
  Listing expected;
};

std::vector<PlaceCase> PlaceCases() {
  const ZipEntry one{.name = "Tool/f", .data = "x"};
  const ZipEntry companion{.name = "__MACOSX/Tool/._f", .data = "x"};
  const ZipEntry single{.name = "page.html", .data = "x"};
  const ZipEntry app{.name = "Tool.app/f", .data = "x"};
  const auto tree = [](const std::string& root) {
    return Listing{{root, "folder"}, {root + "/f", "file x"}};
  };
  return {
      {"OneFolder", "a.zip", {one, companion}, {}, "Tool", tree("Tool")},
      {"OneFolderTaken", "a.zip", {one}, {"Tool/old"}, "Tool 2", tree("Tool 2")},
      {"TwoNamesTaken", "a.zip", {one}, {"Tool/old", "Tool 2"}, "Tool 3", tree("Tool 3")},
      {"BundleTaken", "a.zip", {app}, {"Tool.app/old"}, "Tool 2.app", tree("Tool 2.app")},
      {"SeveralItems",
       "My.Own.ZIP",
       {one, single},
       {},
       "My.Own",
       {{"My.Own", "folder"},
        {"My.Own/Tool", "folder"},
        {"My.Own/Tool/f", "file x"},
        {"My.Own/page.html", "file x"}}},
      {"SeveralItemsTaken",
       "a.zip",
       {single, {.name = "g"}},
       {"a/old"},
       "a 2",
       {{"a 2", "folder"}, {"a 2/page.html", "file x"}, {"a 2/g", "file "}}},
      {"NoEndingToCut",
       "a",
       {single, {.name = "g"}},
       {},
       "a 2",
       {{"a 2", "folder"}, {"a 2/page.html", "file x"}, {"a 2/g", "file "}}},
      {"OneFile", "a.zip", {single}, {}, "page.html", {{"page.html", "file x"}}},
      {"OneFileTaken",
       "a.zip",
       {single},
       {"page.html"},
       "page 2.html",
       {{"page 2.html", "file x"}}},
      {"FileNamedLikeTheArchive",
       "a.zip",
       {{.name = "a.zip", .data = "x"}},
       {},
       "a 2.zip",
       {{"a 2.zip", "file x"}}},
      {"OneLink",
       "a.zip",
       {{.name = "l", .data = "/x", .mode = 0120777}},
       {},
       "l",
       {{"l", "link /x"}}},
      {"OneEmptyFolder", "a.zip", {{.name = "e/", .mode = 0040755}}, {}, "e", {{"e", "folder"}}},
      {"Nothing", "a.zip", {companion}, {}, "", {}},
  };
}

TEST(ExpandBeside, PlacesContentsBesideAndNeverIntoWhatStands) {
  for (const auto& row : PlaceCases()) {
    SCOPED_TRACE(row.name);
    const Scratch scratch;
    for (const std::string& name : row.standing) {
      (void)scratch.Write("p/" + name, "old");
    }
    const std::string zip = scratch.Write(std::string("p/") + row.archive, MakeZip(row.entries));
    Listing expected = List(scratch.Path("p"));
    expected.insert(row.expected.begin(), row.expected.end());

    const Result result = ExpandBeside(zip);

    EXPECT_EQ(result.Line(), "");
    EXPECT_EQ(result.placedAs, row.placedAs);
    EXPECT_EQ(List(scratch.Path("p")), expected);
  }
}

// Folders with many small files, enough for the expansion to be met at work.
std::vector<ZipEntry> BigTree(int folders, int files) {
  std::vector<ZipEntry> entries;
  entries.reserve(static_cast<std::size_t>(files));
  for (int i = 0; i < files; ++i) {
    entries.push_back(
        {.name = "Tool/d" + std::to_string(i % folders) + "/" + std::to_string(i), .data = "x"});
  }
  return entries;
}

// Runs the handler in a process of its own and calls `meanwhile` as soon as the item is there.
template <typename Act>
int RunAndMeanwhile(const std::string& zip, const std::string& item, const Act& meanwhile) {
  const pid_t child = ::fork();
  if (child == 0) {
    (void)!::freopen("/dev/null", "w", stderr);
    ::execl(EXPAND_BESIDE_PROGRAM, EXPAND_BESIDE_PROGRAM, zip.c_str(), nullptr);
    ::_exit(127);
  }
  int status = 0;
  while (!fs::exists(item)) {
    if (::waitpid(child, &status, WNOHANG) == child) {
      ADD_FAILURE() << "ended without the item";
      return status;
    }
  }
  meanwhile();
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(ExpandBeside, GoesOnWhenTheArchiveIsDeleted) {
  const Scratch scratch;
  const std::string zip = scratch.Write("a.zip", MakeZip(BigTree(5, 1000)));
  EXPECT_EQ(RunAndMeanwhile(zip, scratch.Path("Tool"), [&] { fs::remove(zip); }), 0);
  EXPECT_EQ(List(scratch.Path("Tool")).size(), 1005);
}

// The next installer deletes the half-made folder once, and looks a little later whether it is
// gone.
TEST(ExpandBeside, EndsAndLeavesNothingWhenItsFolderIsTakenAway) {
  for (const int folders : {1, 400}) {
    const Scratch scratch;
    const std::string zip = scratch.Write("a.zip", MakeZip(BigTree(folders, 4000)));
    // Before there is a file, a deletion may find nothing to delete, and nobody can notice it.
    const int status = RunAndMeanwhile(zip, scratch.Path("Tool/d0/0"), [&] {
      std::error_code ignored;
      fs::remove_all(scratch.Path("Tool"), ignored);
    });
    EXPECT_EQ(status, 1) << folders;
    EXPECT_FALSE(fs::exists(scratch.Path("Tool"))) << folders;
  }
}

TEST(ExpandBeside, GoesOnWhenOneFileIsDeleted) {
  const Scratch scratch;
  const std::string zip = scratch.Write("a.zip", MakeZip(BigTree(1, 2000)));
  EXPECT_EQ(RunAndMeanwhile(zip, scratch.Path("Tool"),
                            [&] {
                              for (int i = 0;
                                   i < 200 && !fs::remove(scratch.Path("Tool/d0/100"));) {
                              }
                            }),
            0);
  EXPECT_EQ(List(scratch.Path("Tool")).size(), 2000);
}

TEST(ExpandBeside, LeavesAFolderThatWasMovedAsItIs) {
  const Scratch scratch;
  const std::string zip = scratch.Write("a.zip", MakeZip(BigTree(400, 4000)));
  const int status = RunAndMeanwhile(
      zip, scratch.Path("Tool"), [&] { fs::rename(scratch.Path("Tool"), scratch.Path("Moved")); });
  EXPECT_EQ(status, 1);
  EXPECT_FALSE(fs::exists(scratch.Path("Tool")));
  EXPECT_TRUE(fs::exists(scratch.Path("Moved")));
}

}  // namespace
}  // namespace zephin::expander::test
