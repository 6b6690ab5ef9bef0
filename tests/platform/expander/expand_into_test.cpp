// What an expansion into a folder keeps of an archive, and how it ends on a disk that has no room.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <csignal>
#include <ctime>
#include <fstream>

#include "platform/expander/expander.h"
#include "tests/platform/expander/scratch.h"
#include "tests/platform/expander/zip_writer.h"

namespace zephin::expander::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kLink = 0120777;
constexpr std::uint32_t kFolder = 0040755;

struct KeptCase {
  const char* name;
  std::vector<ZipEntry> entries;
  Listing expected;
  ZipLayout layout = {};
};

std::vector<KeptCase> KeptCases() {
  const ZipEntry file{.name = "a.txt", .data = "text"};
  const Listing one = {{"a.txt", "file text"}};
  return {
      {"Nothing", {}, {}},
      {"EmptyFileStored", {{.name = "e"}}, {{"e", "file "}}},
      {"EmptyFileDeflated", {{.name = "e", .deflate = true}}, {{"e", "file "}}},
      {"Deflated", {{.name = "a.txt", .data = "text", .deflate = true}}, one},
      {"Descriptor", {{.name = "a.txt", .data = "text", .deflate = true, .descriptor = true}}, one},
      {"Zip64", {{.name = "a.txt", .data = "text", .zip64 = true}}, one, {.zip64End = true}},
      {"DataBeforeTheArchive", {file}, one, {.prefix = std::string(1000, '#')}},
      {"DataBeforeZip64",
       {{.name = "a.txt", .data = "text", .zip64 = true}},
       one,
       {.prefix = std::string(1000, '#'), .zip64End = true}},
      {"EmptyFolders", {{.name = "d/e/", .mode = kFolder}}, {{"d", "folder"}, {"d/e", "folder"}}},
      {"FolderWithoutSlash", {{.name = "d", .mode = kFolder}}, {{"d", "folder"}}},
      {"FolderAfterItsFile",
       {{.name = "d/f", .data = "x"}, {.name = "d/", .mode = kFolder}},
       {{"d", "folder"}, {"d/f", "file x"}}},
      {"EmptyAndDotParts",
       {{.name = "./d//./f", .data = "x"}},
       {{"d", "folder"}, {"d/f", "file x"}}},
      {"LinksAsStored",
       {{.name = "out", .data = "../../etc", .mode = kLink},
        {.name = "far", .data = "/nowhere", .mode = kLink},
        {.name = "packed", .data = "a/b/c", .mode = kLink, .deflate = true}},
       {{"out", "link ../../etc"}, {"far", "link /nowhere"}, {"packed", "link a/b/c"}}},
      {"LastOfSameNameWins",
       {{.name = "a", .data = "1"}, {.name = "./a", .data = "2"}, {.name = "a", .data = "3"}},
       {{"a", "file 3"}}},
      {"Utf8WithoutFlag", {{.name = "\xC3\xA9", .data = "x"}}, {{"\xC3\xA9", "file x"}}},
      {"BothNormalForms",
       {{.name = "\xC3\xA9", .data = "1"}, {.name = "e\xCC\x81", .data = "2"}},
       {{"\xC3\xA9", "file 1"}, {"e\xCC\x81", "file 2"}}},
      {"CodePage437", {{.name = "\x81 \xE1 \x9B", .data = "x"}}, {{"ü ß ¢", "file x"}}},
      {"BadUtf8WithFlagAsBytes",
       {{.name = "\x81", .data = "x", .flags = 1U << 11U}},
       {{"\x81", "file x"}}},
      {"UnicodeNameField",
       {{.name = "?", .data = "x", .extra = UnicodeNameField("?", "ж")}},
       {{"ж", "file x"}}},
      {"UnicodeNameFieldOfOtherName",
       {{.name = "?", .data = "x", .extra = UnicodeNameField("!", "ж")}},
       {{"?", "file x"}}},
      {"CompanionsDropped",
       {file,
        {.name = "__MACOSX/._a.txt", .data = "x"},
        {.name = "__MACOSX/"},
        {.name = "d/__MACOSX", .data = "kept"},
        {.name = "._own", .data = "kept"}},
       {{"a.txt", "file text"},
        {"d", "folder"},
        {"d/__MACOSX", "file kept"},
        {"._own", "file kept"}}},
  };
}

TEST(ExpandInto, WhatTheArchiveHoldsIsKept) {
  for (const auto& row : KeptCases()) {
    SCOPED_TRACE(row.name);
    const Scratch scratch;
    const std::string zip = scratch.Write("a.zip", MakeZip(row.entries, row.layout));
    const Result result = ExpandInto(zip, scratch.Path("new/target/"));
    EXPECT_EQ(result.Line(), "");
    EXPECT_EQ(List(scratch.Path("new/target")), row.expected);
  }
}

// With the 64-bit record, and without it with a count that has wrapped around.
TEST(ExpandInto, MoreEntriesThan16BitsCountAreKept) {
  std::vector<ZipEntry> entries(65'600, {.name = "__MACOSX/._x"});
  entries.push_back({.name = "last", .data = "x"});
  for (const ZipLayout& layout : {ZipLayout{.zip64End = true}, ZipLayout{.count = 65}}) {
    const Scratch scratch;
    const std::string zip = scratch.Write("a.zip", MakeZip(entries, layout));
    EXPECT_EQ(ExpandInto(zip, scratch.Path("t")).Line(), "");
    EXPECT_EQ(List(scratch.Path("t")), (Listing{{"last", "file x"}}));
  }
}

// Every way that data take, at and around the borders between them.
TEST(ExpandInto, BytesOfEverySizeAreRight) {
  std::vector<ZipEntry> entries;
  for (const std::size_t border : {1UL << 18U, 1UL << 20U, 4UL << 20U}) {
    for (const std::size_t size : {border - 1, border, border + 1}) {
      for (const bool deflate : {false, true}) {
        const std::string name = std::to_string(size) + (deflate ? "d" : "s");
        entries.push_back({.name = "d/" + name, .data = Noise(size), .deflate = deflate});
      }
    }
  }
  std::string zeros;
  zeros.resize(20'000'000);
  entries.push_back({.name = "zeros", .data = zeros, .deflate = true});
  const Scratch scratch;
  const Result result = ExpandInto(scratch.Write("a.zip", MakeZip(entries)), scratch.Path("t"));
  EXPECT_EQ(result.Line(), "");
  EXPECT_EQ(result.expanded, entries.size());
  for (const ZipEntry& entry : entries) {
    EXPECT_TRUE(ReadFile(scratch.Path("t/" + entry.name)) == entry.data) << entry.name;
  }
}

struct stat Status(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
  return status;
}

TEST(ExpandInto, ModesAreKeptWithoutSetIdAndSticky) {
  const Scratch scratch;
  std::vector<ZipEntry> entries;
  for (const std::uint32_t mode : {0755U, 0644U, 0600U, 0666U, 0444U, 0000U, 07751U}) {
    entries.push_back({.name = "f" + std::to_string(mode), .data = "x", .mode = 0100000 | mode});
    entries.push_back({.name = "d" + std::to_string(mode) + "/", .mode = 0040000 | mode});
  }
  entries.push_back({.name = "d" + std::to_string(0444U) + "/in", .data = "x"});
  entries.push_back({.name = "dos", .data = "x", .mode = 1, .host = 0});
  const Result result = ExpandInto(scratch.Write("a.zip", MakeZip(entries)), scratch.Path("t"));
  EXPECT_EQ(result.Line(), "");
  EXPECT_EQ(ReadFile(scratch.Path("t/dos")), "x");
  for (const ZipEntry& entry : entries) {
    if (entry.host == 3) {
      const struct stat status = Status(scratch.Path("t/" + entry.name));
      EXPECT_EQ(status.st_mode & 07777U, entry.mode & 0777U) << entry.name;
    }
  }
}

TEST(ExpandInto, TimesAreKept) {
  const Scratch scratch;
  const std::string exact = ExtraField(0x5455, "\1" + LittleEndian(1'600'000'001, 4));
  const std::string old = ExtraField(0x5855, LittleEndian(7, 4) + LittleEndian(1'600'000'002, 4));
  const std::string ntfs =
      ExtraField(0x000A, LittleEndian(0, 4) + LittleEndian(1, 2) + LittleEndian(24, 2) +
                             LittleEndian((11'644'473'600 + 1'600'000'003) * 10'000'000, 24));
  const std::vector<ZipEntry> entries = {
      {.name = "d/exact", .data = "x", .extra = exact},
      {.name = "d/old", .data = "x", .extra = old},
      {.name = "d/ntfs", .data = "x", .extra = ntfs},
      {.name = "d/link", .data = "x", .mode = kLink, .extra = exact},
      {.name = "d/big", .data = Noise(5'000'000), .extra = exact},
      {.name = "d/local", .data = "x"},
      {.name = "d/", .mode = kFolder, .extra = exact}};
  ASSERT_TRUE(ExpandInto(scratch.Write("a.zip", MakeZip(entries)), scratch.Path("t")).Complete());
  for (const auto& [name, seconds] : std::map<std::string, std::time_t>{{"exact", 1'600'000'001},
                                                                        {"old", 1'600'000'002},
                                                                        {"ntfs", 1'600'000'003},
                                                                        {"link", 1'600'000'001},
                                                                        {"big", 1'600'000'001},
                                                                        {"", 1'600'000'001}}) {
    EXPECT_EQ(Status(scratch.Path("t/d/" + name)).st_mtime, seconds) << name;
  }
  const std::time_t local = Status(scratch.Path("t/d/local")).st_mtime;
  std::tm day{};
  (void)::localtime_r(&local, &day);
  EXPECT_EQ(day.tm_year + 1900, 2024);
  EXPECT_EQ(day.tm_mon + 1, 3);
  EXPECT_EQ(day.tm_mday, 9);
  EXPECT_EQ(day.tm_hour, 0);
}

TEST(ExpandInto, FolderIsMadeBeforeTheArchiveIsRead) {
  const Scratch scratch;
  const Result missing = ExpandInto(scratch.Path("none.zip"), scratch.Path("x/y"));
  EXPECT_EQ(missing.Line(), scratch.Path("none.zip") + ": No such file or directory");
  EXPECT_TRUE(fs::is_directory(scratch.Path("x/y")));
  const std::string zip = scratch.Write("a.zip", MakeZip({{.name = "a"}}));
  EXPECT_EQ(ExpandInto(zip, zip + "/t").faults, 1);
  EXPECT_EQ(ExpandInto(scratch.Path("x"), scratch.Path("t")).Line(),
            scratch.Path("x") + ": Is a directory");
}

// Each write past the limit fails, as on a full disk.
TEST(ExpandInto, DiskThatFillsLeavesOnlyWholeFilesAndTells) {
  const Scratch scratch;
  const std::string zip =
      scratch.Write("a.zip", MakeZip({{.name = "small", .data = "x"},
                                      {.name = "whole", .data = Noise(200'000)},
                                      {.name = "blocks", .data = Noise(900'000), .deflate = true},
                                      {.name = "alone", .data = Noise(2'000'000), .deflate = true},
                                      {.name = "shared", .data = Noise(9'000'000)}}));
  rlimit old{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
  auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit tight{100'000, old.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tight), 0);
  const Result result = ExpandInto(zip, scratch.Path("t"));
  EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &old), 0);
  (void)std::signal(SIGXFSZ, handler);
  EXPECT_EQ(result.Line(), "whole: File too large (and 3 more)");
  EXPECT_EQ(List(scratch.Path("t")), (Listing{{"small", "file x"}}));
}

// A stored file larger than the free space, all holes, so that the archive itself needs no room.
TEST(ExpandInto, WhatCannotFitIsRefusedBeforeTheFirstByte) {
  const Scratch scratch;
  const std::string zip = scratch.Path("a.zip");
  struct statvfs disk {};
  ASSERT_EQ(::statvfs(scratch.Path("").c_str(), &disk), 0);
  const std::uint64_t size = (disk.f_bfree + 1000) * disk.f_frsize;
  const std::string whole =
      MakeZip({{.name = "huge", .zip64 = true, .size = size, .packedSize = size}});
  const std::size_t table = whole.find("PK\1\2");
  std::string end = whole.substr(table);
  const std::size_t place = end.rfind("PK\5\6");
  end.insert(place, "PK\6\6" + LittleEndian(44, 8) + LittleEndian(0, 12) + LittleEndian(1, 8) +
                        LittleEndian(1, 8) + LittleEndian(place, 8) +
                        LittleEndian(table + size, 8) + "PK\6\7" + LittleEndian(0, 4) +
                        LittleEndian(table + size + place, 8) + LittleEndian(1, 4));
  std::ofstream file(zip, std::ios::binary);
  file << whole.substr(0, table);
  file.seekp(static_cast<std::streamoff>(table + size));
  file << end;
  file.close();
  if (!file) {
    GTEST_SKIP() << "the disk has no room for a file of holes";
  }
  const Result result = ExpandInto(zip, scratch.Path("t"));
  EXPECT_NE(result.Line().find("needs " + std::to_string(size) + " bytes, but only "),
            std::string::npos)
      << result.Line();
  EXPECT_EQ(List(scratch.Path("t")), Listing());
}

}  // namespace
}  // namespace zephin::expander::test
