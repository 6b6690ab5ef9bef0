#include "util/paths.h"

#include <gtest/gtest.h>

#include "tests/support/stub_run.h"
#include "util/my_get_folder_item.h"

namespace zephin::test {
namespace {

using GlobalsVk::MyGetFolderItem;
using ViewConst::MyAbsolutePath;

TEST(Paths, CutAtTheLastSeparatorAndTheLastDotBehindIt) {
  const struct {
    const char* path;
    const char* folder;
    const char* name;
    const char* extension;
    const char* withZip;
    const char* holder;
  } rows[] = {
      {"", "", "", "", ".zip", ""},
      {"name", "", "name", "", "name.zip", ""},
      {"/name", "/", "name", "", "/name.zip", ""},
      {"/a/b/", "/a/b/", "", "", "/a/b/.zip", "/a/b"},
      {"/a.b/c", "/a.b/", "c", "", "/a.b/c.zip", "/a.b"},
      {"/a/.zip", "/a/", ".zip", ".zip", "/a/.zip", "/a"},
      {"/a/b.tar.gz", "/a/", "b.tar.gz", ".gz", "/a/b.tar.zip", "/a"},
      {"/A/B.app/file", "/A/B.app/", "file", "", "/A/B.app/file.zip", "/A"},
      {"/A/B.APP/C.app/x.y", "/A/B.APP/C.app/", "x.y", ".y", "/A/B.APP/C.app/x.zip", "/A/B.APP"},
      {"/B.app/file", "/B.app/", "file", "", "/B.app/file.zip", ""},
      {"/Caf\u00E9/\u65E5\u672C.\u00E9", "/Caf\u00E9/", "\u65E5\u672C.\u00E9", ".\u00E9",
       "/Caf\u00E9/\u65E5\u672C.zip", "/Caf\u00E9"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(ViewConst::ExtractFilePath(row.path).Bytes(), row.folder);
    EXPECT_EQ(ViewConst::ExtractFileName(row.path).Bytes(), row.name);
    EXPECT_EQ(ViewConst::ExtractFileExt(row.path).Bytes(), row.extension);
    EXPECT_EQ(ViewConst::ChangeFileExt(row.path, ".zip").Bytes(), row.withZip);
    EXPECT_EQ(ViewConst::MyExtractFilePath(row.path).Bytes(), row.holder);
  }
}

TEST(Paths, DirectoryPathExtractCountsTheSearchThatFindsNone) {
  const struct {
    const char* path;
    std::int64_t index;
    const char* part;
  } rows[] = {
      {"/a/b", -1, ""}, {"/a/b", 0, ""},  {"/a/b", 1, ""},   {"/a/b", 2, "/a"}, {"/a/b", 3, "/a/b"},
      {"/a/b", 4, ""},  {"/a/", 2, "/a"}, {"/a/", 3, "/a/"}, {"a/b", 1, "a"},   {"a/b", 2, "a/b"},
      {"a", 1, "a"},    {"//a", 2, "/"},  {"", 1, ""},       {"", 2, ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ViewConst::DirectoryPathExtract(row.path, row.index).Bytes(), row.part)
        << row.path << " " << row.index;
  }
}

TEST(Paths, OneTrailingSeparatorIsDropped) {
  for (const auto& [path, dropped] :
       {std::pair{"", ""}, {"/", ""}, {"a/", "a"}, {"a//", "a/"}, {"/a", "/a"}}) {
    String text = path;
    ViewConst::DropTrailingPathSeparator(text);
    EXPECT_EQ(text.Bytes(), dropped);
  }
}

TEST(Paths, OnlyAFolderThatIsThereEndsInASeparator) {
  const ScratchFolder scratch;
  WriteFile(scratch / "file", "x");
  std::filesystem::create_directory_symlink(scratch.Path(), scratch / "alias");
  const std::string base = scratch.Path();
  EXPECT_EQ(MyAbsolutePath(nullptr).Bytes(), "");
  EXPECT_EQ(MyAbsolutePath(MyGetFolderItem("/")).Bytes(), "/");
  EXPECT_EQ(MyAbsolutePath(MyGetFolderItem(Utf8(base))).Bytes(), base + "/");
  EXPECT_EQ(MyAbsolutePath(MyGetFolderItem(Utf8(base + "/alias"))).Bytes(), base + "/alias/");
  EXPECT_EQ(MyAbsolutePath(MyGetFolderItem(Utf8(base + "/file"))).Bytes(), base + "/file");
  EXPECT_EQ(MyAbsolutePath(MyGetFolderItem(Utf8(base + "/missing/"))).Bytes(), base + "/missing");
}

TEST(Paths, RelativePathsNeverResolve) {
  StubRun run;
  run.BareWindow();
  WriteFile(run.Disk() / "there", "x");
  for (const char* path : {"", "there", "./there", " /there", "~/there"}) {
    EXPECT_TRUE(MyGetFolderItem(path).IsNil()) << path;
  }
}

}  // namespace
}  // namespace zephin::test
