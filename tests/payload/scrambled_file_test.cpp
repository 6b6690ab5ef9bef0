#include "payload/scrambled_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <memory>

#include "setup/bundle_files.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

class ScrambledFile : public testing::Test {
 protected:
  ScrambledFile() { run.BareWindow(); }
  void Unscramble() const { ViewConst::EncryptDecryptFileEnd(Utf8(file), false); }

  StubRun run;
  const fs::path file = run.scratch / "folder/file.zip";
};

TEST_F(ScrambledFile, IsReplacedByAWholeNewFileInBothDirections) {
  constexpr std::size_t kBlock = std::size_t{256} * 1024;
  for (const std::size_t size : {0UL, 1UL, 255UL, kBlock - 1, kBlock, 2 * kBlock + 1}) {
    const std::string plain = Noise(size);
    std::string scrambled = plain;
    ScrambleBytes(scrambled, 0);
    WriteFile(file, plain);
    fs::permissions(file, fs::perms(0400));
    ViewConst::EncryptDecryptFileEnd(Utf8(file), true);
    EXPECT_TRUE(ReadFile(file) == scrambled) << size;
    EXPECT_NE(fs::status(file).permissions(), fs::perms(0400)) << size;
    Unscramble();
    EXPECT_TRUE(ReadFile(file) == plain) << size;
  }
  // Without a file nothing happens.
  fs::remove(file);
  Unscramble();
  ViewConst::EncryptDecryptFileEnd("", false);
  EXPECT_FALSE(fs::exists(file));
}

// Freeing what was read must not damage the file under its other name.
TEST_F(ScrambledFile, LargeFileIsCompleteAndItsHardLinkIsUnchanged) {
  std::string scrambled;
  scrambled.resize(33'000'001, 'b');
  const std::string before = scrambled;
  WriteFile(file, before);
  fs::create_hard_link(file, run.scratch / "other");
  for (const bool again : {false, true}) {
    Unscramble();
    UnscrambleBytes(scrambled, 0);
    EXPECT_TRUE(ReadFile(file) == scrambled) << again;
  }
  EXPECT_TRUE(ReadFile(run.scratch / "other") == before);
}

// A payload from a read-only disc: without the right to write, the disk would have to hold it
// twice.
TEST_F(ScrambledFile, ReadOnlyFileGivesItsSpaceBack) {
  std::string bytes;
  bytes.resize(40'000'000, 'b');
  WriteFile(file, bytes);
  fs::permissions(file, fs::perms(0444));
  const PlainUser user(run.scratch.Path());
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> old(std::fopen(file.c_str(), "rb"),
                                                            std::fclose);
  Unscramble();
  struct stat state {};
  ASSERT_EQ(fstat(fileno(old.get()), &state), 0);
  EXPECT_EQ(state.st_nlink, 0U);
  EXPECT_LT(state.st_blocks * 512, 20'000'000);
}

TEST_F(ScrambledFile, FileThatCannotBeDeletedIsOverwritten) {
  WriteFile(file, std::string(100'001, 'b'));
  fs::permissions(file.parent_path(), fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  Unscramble();
  const std::string plain = ReadFile(file);
  EXPECT_EQ(plain.size(), 100'001U);
  EXPECT_EQ(plain.substr(99'998), "bab");
}

}  // namespace
}  // namespace zephin::test
