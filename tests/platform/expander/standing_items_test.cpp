// Expansion into a folder in which something stands already: it merges, and is never led out.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "platform/expander/expander.h"
#include "tests/platform/expander/scratch.h"
#include "tests/platform/expander/zip_writer.h"

namespace zephin::expander::test {
namespace {

namespace fs = std::filesystem;

struct StandingCase {
  const char* name;
  // Puts something into the folder "target"; "outside" is a folder beside it.
  std::function<void(const Scratch&)> prepare;
  Listing expected;
  // Empty for a complete expansion.
  const char* why;
};

std::vector<StandingCase> StandingCases() {
  const auto link = [](const char* target, const char* name) {
    return [=](const Scratch& scratch) { fs::create_symlink(target, scratch.Path(name)); };
  };
  const auto file = [](const char* name) {
    return [=](const Scratch& scratch) { (void)scratch.Write(name, "old"); };
  };
  const Listing whole = {{"f", "file new"}, {"d", "folder"}, {"d/g", "file new"}, {"l", "link f"}};
  const auto with = [&whole](const Listing& more) {
    Listing all = more;
    all.insert(whole.begin(), whole.end());
    return all;
  };
  const Listing withoutFolder = {{"f", "file new"}, {"l", "link f"}};
  const auto lost = [&withoutFolder](const std::string& what) {
    Listing all = withoutFolder;
    all["d"] = what;
    return all;
  };
  return {
      {"OtherFilesStay", file("target/d/other"), with({{"d/other", "file old"}}), ""},
      {"FileIsReplaced", file("target/f"), whole, ""},
      {"LinkForFileIsReplaced", link("../outside/kept", "target/f"), whole, ""},
      {"DanglingLinkForFileIsReplaced", link("../outside/none", "target/f"), whole, ""},
      {"FileForLinkIsReplaced", file("target/l"), whole, ""},
      {"LinkForFolderIsNotFollowed", link("../outside", "target/d"), lost("link ../outside"),
       "d/g: a file or link stands where its folder must be"},
      {"FileForFolderStays", file("target/d"), lost("file old"),
       "d/g: a file or link stands where its folder must be"},
      {"FolderForFileStays",
       file("target/f/in"),
       {{"f", "folder"},
        {"f/in", "file old"},
        {"d", "folder"},
        {"d/g", "file new"},
        {"l", "link f"}},
       "f: Is a directory"},
      {"FolderForLinkStays",
       file("target/l/in"),
       {{"l", "folder"},
        {"l/in", "file old"},
        {"d", "folder"},
        {"d/g", "file new"},
        {"f", "file new"}},
       "l: Is a directory"},
  };
}

TEST(StandingItems, AreMergedIntoAndLeadNowhere) {
  for (const auto& row : StandingCases()) {
    SCOPED_TRACE(row.name);
    const Scratch scratch;
    (void)scratch.Write("outside/kept", "outside");
    fs::create_directory(scratch.Path("target"));
    row.prepare(scratch);
    const std::string zip =
        scratch.Write("a.zip", MakeZip({{.name = "f", .data = "new"},
                                        {.name = "d/g", .data = "new"},
                                        {.name = "l", .data = "f", .mode = 0120777}}));
    const Result result = ExpandInto(zip, scratch.Path("target"));
    EXPECT_EQ(result.Line(), row.why);
    EXPECT_EQ(List(scratch.Path("target")), row.expected);
    EXPECT_EQ(List(scratch.Path("outside")), (Listing{{"kept", "file outside"}}));
  }
}

TEST(StandingItems, ReadOnlyTreeIsExpandedOverAgain) {
  const Scratch scratch;
  const std::string zip = scratch.Write(
      "a.zip",
      MakeZip({{.name = "d/", .mode = 0040555}, {.name = "d/f", .data = "x", .mode = 0100444}}));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(ExpandInto(zip, scratch.Path("t")).Line(), "");
    EXPECT_EQ(fs::status(scratch.Path("t/d")).permissions(), fs::perms{0555});
  }
}

// A hard link of the file that is replaced keeps its content.
TEST(StandingItems, ReplacedFileIsAnotherFile) {
  const Scratch scratch;
  (void)scratch.Write("t/f", "old");
  fs::create_hard_link(scratch.Path("t/f"), scratch.Path("outside"));
  const std::string zip = scratch.Write("a.zip", MakeZip({{.name = "f", .data = "new"}}));
  EXPECT_EQ(ExpandInto(zip, scratch.Path("t")).Line(), "");
  EXPECT_EQ(ReadFile(scratch.Path("outside")), "old");
}

}  // namespace
}  // namespace zephin::expander::test
