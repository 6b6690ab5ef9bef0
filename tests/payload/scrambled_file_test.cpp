#include "payload/scrambled_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "setup/scrambling_bytes.h"
#include "tests/support/limits.h"
#include "tests/support/stub_run.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using ViewConst::EncryptDecryptFileEnd;

class ScrambledFile : public testing::Test {
 protected:
  ScrambledFile() { run.BareWindow(); }
  void Unscramble() const { EncryptDecryptFileEnd(Utf8(file), false); }

  StubRun run;
  const fs::path file = run.scratch / "folder/file.zip";
};

std::string SomeBytes(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) {
    bytes += static_cast<char>(i * 7 + i / 256);
  }
  return bytes;
}

TEST_F(ScrambledFile, IsRewrittenWholeInBothDirections) {
  constexpr std::size_t kBlock = 256 * 1024;
  for (const std::size_t size : {0UL, 1UL, 2UL, 255UL, kBlock - 1, kBlock, 2 * kBlock + 1}) {
    const std::string plain = SomeBytes(size);
    std::string scrambled = plain;
    ScrambleBytes(scrambled, 0);
    WriteFile(file, plain);
    fs::permissions(file, fs::perms(0400));
    EncryptDecryptFileEnd(Utf8(file), true);
    EXPECT_TRUE(ReadFile(file) == scrambled) << size;
    // A new file has the rights of one.
    EXPECT_NE(fs::status(file).permissions(), fs::perms(0400)) << size;
    Unscramble();
    EXPECT_TRUE(ReadFile(file) == plain) << size;
  }
}

TEST_F(ScrambledFile, WhatIsNoReadableFileIsLeftAlone) {
  for (const char* path : {"", "relative"}) {
    EncryptDecryptFileEnd(path, false);
  }
  Unscramble();
  EXPECT_FALSE(fs::exists(file));
  WriteFile(file / "a folder", "ab");
  Unscramble();
  EXPECT_EQ(ReadFile(file / "a folder"), "ab");
  fs::permissions(file / "a folder", fs::perms(0200));
  {
    const PlainUser user(run.scratch.Path());
    EncryptDecryptFileEnd(Utf8(file / "a folder"), false);
    fs::permissions(file / "a folder", fs::perms(0600));
  }
  EXPECT_EQ(ReadFile(file / "a folder"), "ab");
}

TEST_F(ScrambledFile, ALinkBecomesTheFileAndItsTargetStays) {
  WriteFile(run.scratch / "target", "ab");
  fs::create_directory(file.parent_path());
  fs::create_symlink(run.scratch / "target", file);
  Unscramble();
  EXPECT_FALSE(fs::is_symlink(file));
  EXPECT_EQ(ReadFile(file), "aa");
  EXPECT_EQ(ReadFile(run.scratch / "target"), "ab");
}

TEST_F(ScrambledFile, OneThatCanNotBeDeletedIsWrittenOver) {
  const std::string scrambled = SomeBytes(100001);
  std::string plain = scrambled;
  UnscrambleBytes(plain, 0);
  WriteFile(file, scrambled);
  fs::permissions(file.parent_path(), fs::perms(0555));
  const PlainUser user(run.scratch.Path());
  Unscramble();
  EXPECT_TRUE(ReadFile(file) == plain);
}

TEST_F(ScrambledFile, OneThatCanNotBeMadeAnewIsGone) {
  WriteFile(file, "ab");
  rlimit before{};
  getrlimit(RLIMIT_NOFILE, &before);
  const int next = dup(STDERR_FILENO);
  close(next);
  // Room for the file that is read, none for the one to be written.
  rlimit tight = before;
  tight.rlim_cur = static_cast<rlim_t>(next) + 1;
  setrlimit(RLIMIT_NOFILE, &tight);
  Unscramble();
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_FALSE(fs::exists(file));
}

TEST_F(ScrambledFile, OnAFullDiskItEndsWhereTheDiskDoes) {
  WriteFile(file, std::string(1'000'000, 'x'));
  {
    const FullDisk full(600'000);
    Unscramble();
  }
  EXPECT_EQ(fs::file_size(file), 600'000U);
}

TEST_F(ScrambledFile, ItsSizeTakesNoMemory) {
  WriteFile(file, "");
  fs::resize_file(file, 40'000'000);
  const auto peakMegabytes = [] {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
  };
  const auto before = peakMegabytes();
  Unscramble();
  EXPECT_LT(peakMegabytes() - before, 8);
}

}  // namespace
}  // namespace zephin::test
