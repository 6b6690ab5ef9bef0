#include "util/paths.h"

#include <gtest/gtest.h>

#include "tests/support/stub_run.h"
#include "util/texts.h"

namespace zephin::test {
namespace {

using namespace ViewConst;

TEST(Paths, AreSplitAtTheLastSeparatorAndTheLastDotAfterIt) {
  // Folder, name, extension, path with another one, and the folder around the bundle.
  const std::vector<std::pair<const char*, const char*>> rows{
      {"", ",,,.zip,"},
      {"name", ",name,,name.zip,"},
      {"/name", "/,name,,/name.zip,"},
      {"/a/b/", "/a/b/,,,/a/b/.zip,/a/b"},
      {"/a.b/c", "/a.b/,c,,/a.b/c.zip,/a.b"},
      {"/a/.zip", "/a/,.zip,.zip,/a/.zip,/a"},
      {"/A/B.app/x.y.z", "/A/B.app/,x.y.z,.z,/A/B.app/x.y.zip,/A"},
      {"/A.app/B.APP/x", "/A.app/B.APP/,x,,/A.app/B.APP/x.zip,/A.app"},
      {"/\u00E9/\u65E5.\u00E9", "/\u00E9/,\u65E5.\u00E9,.\u00E9,/\u00E9/\u65E5.zip,/\u00E9"},
  };
  for (const auto& [path, parts] : rows) {
    EXPECT_EQ(ExtractFilePath(path) + "," + ExtractFileName(path) + "," + ExtractFileExt(path) +
                  "," + ChangeFileExt(path, ".zip") + "," + MyExtractFilePath(path),
              parts);
  }
}

TEST(Paths, DirectoryPathExtractReturnsThePartBeforeASeparator) {
  const std::vector<std::pair<const char*, const char*>> rows{
      {"/a/b", ",,/a,/a/b,"}, {"/a/", ",,/a,/a/,"}, {"a/b", ",a,a/b,,"}, {"", ",,,,"}};
  for (const auto& [path, expected] : rows) {
    std::string parts;
    for (int index = 0; index < 5; ++index) {
      parts += (index == 0 ? "" : ",") + DirectoryPathExtract(path, index).Bytes();
    }
    EXPECT_EQ(parts, expected) << path;
  }
}

TEST(Paths, OnlyAnExistingFolderEndsInASeparatorAndRelativePathsAreInvalid) {
  StubRun run;
  run.BareWindow();
  const std::string base = run.scratch.Path();
  const std::vector<std::pair<std::string, std::string>> rows{
      {"/", "/"}, {base, base + "/"}, {base + "/none/", base + "/none"},
      {"", ""},   {"Setup.app", ""},  {run.machine.executable, run.machine.executable},
  };
  for (const auto& [path, absolute] : rows) {
    const auto item = GlobalsVk::MyGetFolderItem(Utf8(path));
    EXPECT_EQ(MyAbsolutePath(item).Bytes(), absolute) << path;
  }
}

TEST(Text, FindFieldReturnsTheFirstMatchIgnoringCase) {
  StubRun run;
  run.BareWindow();
  const std::vector<std::tuple<const char*, const char*, int>> rows{
      {"a,b,B", "B", 2}, {"a,b", "c", 0}, {"a,,b", "", 2}, {"", "", 1}, {"\u00C9", "\u00E9", 1}};
  for (const auto& [source, value, index] : rows) {
    EXPECT_EQ(FindField(source, ",", value), index) << source << " " << value;
  }
}

TEST(Text, ReplaceWorksOnTheBytesInMacRoman) {
  StubRun run;
  run.BareWindow();
  const std::vector<std::tuple<String, const char*, const char*, const char*, Encoding>> rows{
      {"Aa|", "a", "xyz", "xx|", Encoding::MacRoman},
      {"\u65E5|", "|", "\n", "\u65E5\n", Encoding::UTF8},
      {{"\xC3\xA9|\x8E", Encoding::None}, "|", "\n", "\xC3\xA9\n\x8E", Encoding::MacRoman},
      // As it is called for line endings: every one stays.
      {"\u00E9\r\n", "", "\n", "\x8E\r\n", Encoding::MacRoman},
  };
  for (const auto& [text, ch1, ch2, replaced, encoding] : rows) {
    const String result = ReplaceCh1WithCh2(text, ch1, ch2);
    EXPECT_EQ(result.Bytes(), replaced);
    EXPECT_EQ(result.DeclaredEncoding(), encoding) << replaced;
  }
  EXPECT_EQ(LineEndingEncoding("\u65E5").DeclaredEncoding(), Encoding::UTF8);
}

}  // namespace
}  // namespace zephin::test
