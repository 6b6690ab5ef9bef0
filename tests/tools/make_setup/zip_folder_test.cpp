#include "tools/make_setup/zip_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <string>

#include "platform/expander/expander.h"
#include "platform/expander/zip/archive_file.h"
#include "platform/expander/zip/central_directory.h"
#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"
#include "tools/make_setup/packed_pieces.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

TEST(ZipFolder, ExpandedArchiveHasTheModesLinksAndTimesOfTheTree) {
  const test::ScratchFolder folder;
  const fs::path tree = folder / "tree";
  MakeTree(tree, "b=bytes a/tool=run a/deep/\u00FC\u65E5= empty/ link->a/nothing");
  fs::permissions(tree / "a/tool", fs::perms{06751});
  fs::permissions(tree / "b", fs::perms{0604});
  const fs::file_time_type time = fs::file_time_type::clock::from_sys(
      std::chrono::sys_seconds(std::chrono::seconds(1600000001)));
  fs::last_write_time(tree / "a/tool", time);
  fs::last_write_time(tree / "empty", time);
  ZipFolder(tree, folder / "a.zip", {.topName = "Top"});
  const expander::Result result = expander::ExpandBeside(folder / "a.zip");
  EXPECT_EQ(result.placedAs + result.Line(), "Top");
  EXPECT_EQ(TreeWords(folder / "Top"), TreeWords(tree));
  EXPECT_EQ(fs::status(folder / "Top/a/tool").permissions(), fs::perms{0751});
  EXPECT_EQ(fs::status(folder / "Top/b").permissions(), fs::perms{0604});
  EXPECT_EQ(fs::last_write_time(folder / "Top/a/tool"), time);
  EXPECT_EQ(fs::last_write_time(folder / "Top/empty"), time);
}

TEST(ZipFolder, ItemThatCannotBePackedIsRefusedAndNoArchiveIsLeft) {
  const test::ScratchFolder folder;
  MakeTree(folder.Path(), "pipe/in/ latin/\xFC= companions/__MACOSX/x= empty/");
  ASSERT_EQ(mkfifo((folder / "pipe/in/it").c_str(), 0600), 0);
  for (const auto& [name, item] : {std::pair{"pipe", "pipe/in/it"},
                                   {"latin", "\xFC"},
                                   {"companions", "__MACOSX"},
                                   {"empty", "empty"},
                                   {"none", "none"}}) {
    const fs::path from = folder / name;
    const std::string refusal = Refusal([&] { ZipFolder(from, folder / "a.zip"); });
    EXPECT_NE(refusal.find(item), std::string::npos) << refusal;
    EXPECT_FALSE(fs::exists(folder / "a.zip")) << refusal;
  }
}

/// Text that compresses well with an incompressible part in the middle.
std::string Mixed(std::size_t size) {
  std::string text;
  while (text.size() < size) {
    text += "line " + std::to_string(text.size() * 7919 % 4093) + "\n";
    if (text.size() > size / 3 && text.size() < size / 2) {
      text += test::Noise(100000);
    }
  }
  text.resize(size);
  return text;
}

TEST(ZipFolder, ArchiveOfManyPiecesExpandsToTheFilesAndDoesNotDependOnTheThreads) {
  const test::ScratchFolder folder;
  const fs::path tree = folder / "tree";
  for (const std::uint64_t size : {std::uint64_t{0}, std::uint64_t{1}, kLongestPiece - 1,
                                   kLongestPiece, kLongestPiece + 1, 2 * kLongestPiece + 17}) {
    test::WriteFile(tree / ("mixed" + std::to_string(size)), Mixed(size));
    test::WriteFile(tree / ("noise" + std::to_string(size)), test::Noise(size));
  }
  for (const Compression compression : {Compression::Deflate, Compression::Zstd}) {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
    const auto report = [&](std::uint64_t moreFiles, std::uint64_t moreBytes) {
      files += moreFiles;
      bytes += moreBytes;
    };
    ZipFolder(tree, folder / "1.zip", {.topName = "Top", .compression = compression, .threads = 1});
    ZipFolder(tree, folder / "3.zip",
              {.topName = "Top", .compression = compression, .threads = 3, .report = report});
    EXPECT_EQ(files, 12);
    EXPECT_EQ(bytes, 2 * (5 * kLongestPiece + 18));
    EXPECT_TRUE(test::ReadFile(folder / "1.zip") == test::ReadFile(folder / "3.zip"));
    EXPECT_EQ(expander::ExpandBeside(folder / "3.zip").Line(), "");
    EXPECT_TRUE(test::Tree(folder / "Top") == test::Tree(tree));
    fs::remove_all(folder / "Top");
  }
}

TEST(ZipFolder, ErrorAndEndedReportLeaveNoArchive) {
  const test::ScratchFolder folder;
  test::WriteFile(folder / "tree/large", Mixed(40 * kLongestPiece));
  const auto interrupt = [](std::uint64_t /*files*/, std::uint64_t /*bytes*/) {
    throw SetupError("ended");
  };
  EXPECT_EQ(Refusal([&] { ZipFolder(folder / "tree", folder / "a.zip", {.report = interrupt}); }),
            "ended");
  EXPECT_FALSE(fs::exists(folder / "a.zip"));
}

TEST(ZipWriter, MoreThan65535EntriesAreListed) {
  const test::ScratchFolder folder;
  ZipWriter zip(folder / "a.zip", ZipForm::Plain);
  constexpr int kCount = 65537;
  for (int i = 0; i < kCount; ++i) {
    zip.Begin({.name = std::to_string(i) + "/", .mode = 0040755});
    zip.End(ZipMethod::Stored, 0);
  }
  zip.Close();
  expander::ArchiveFile file;
  ASSERT_EQ(file.Open(folder / "a.zip"), 0);
  expander::CentralDirectory directory;
  expander::Faults faults;
  directory.Read(file, "a.zip", faults);
  EXPECT_EQ(directory.entries.size(), kCount);
}

}  // namespace
}  // namespace zephin::make_setup
