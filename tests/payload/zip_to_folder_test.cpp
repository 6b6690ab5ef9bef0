#include "payload/zip_to_folder.h"

#include <gtest/gtest.h>

#include "tests/support/stub_run.h"
#include "tools/make_setup/zip_folder.h"

namespace zephin::test {
namespace {

using Expected = std::map<std::string, std::string>;
using ViewConst::ZipFileToFolder;

TEST(ZipToFolder, ExpandsOverWhatStandsOrAfterItIsGone) {
  StubRun run;
  run.BareWindow();
  const auto zip = run.scratch / "it's a $(zip) \"x\".zip";
  const auto folder = run.scratch / "two words\n& more";
  WriteFile(run.scratch / "content/new", "n");
  make_setup::ZipFolder(run.scratch / "content", "Top", zip);
  WriteFile(folder / "old", "o");

  EXPECT_TRUE(ZipFileToFolder(Utf8(zip), Utf8(folder), false));
  EXPECT_EQ(Tree(folder), (Expected{{"old", "o"}, {"Top", "/"}, {"Top/new", "n"}}));
  EXPECT_TRUE(ZipFileToFolder(Utf8(zip), Utf8(folder), true));
  EXPECT_EQ(Tree(folder), (Expected{{"Top", "/"}, {"Top/new", "n"}}));
}

TEST(ZipToFolder, FailureIsInTheResultAndARelativePathRaises) {
  StubRun run;
  run.BareWindow();
  WriteFile(run.scratch / "broken.zip", "no archive");
  for (const char* name : {"broken.zip", "none.zip"}) {
    EXPECT_FALSE(ZipFileToFolder(Utf8(run.scratch / name), Utf8(run.scratch / "to"), true)) << name;
  }
  EXPECT_THROW((void)ZipFileToFolder("a.zip", "/to", false), NilObjectException);
  EXPECT_THROW((void)ZipFileToFolder("/a.zip", "", false), NilObjectException);
}

}  // namespace
}  // namespace zephin::test
