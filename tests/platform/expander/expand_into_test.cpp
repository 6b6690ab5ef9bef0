// What an expansion into a folder keeps of an archive and of what stands in the folder, and how it
// ends on a disk that has no room.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <random>

#include "platform/expander/expander.h"
#include "tests/platform/expander/system_calls.h"
#include "tests/platform/expander/zip_writer.h"
#include "tests/support/limits.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using expander::ExpandInto;
using expander::Result;

// Writes an archive into the scratch folder, and expands it into the folder "t" there.
Result Expand(const ScratchFolder& scratch, const std::vector<ZipEntry>& entries,
              const ZipLayout& layout = {}) {
  WriteFile(scratch / "a.zip", MakeZip(entries, layout));
  return ExpandInto(scratch / "a.zip", scratch / "t/");
}

struct Kept {
  ZipEntry entry;
  // What stands then: where, and what. Nil for nothing, or nothing new.
  const char* path = nullptr;
  const char* content = nullptr;
};

TEST(ExpandInto, WhatTheArchiveHoldsIsKept) {
  const std::vector<Kept> rows = {
      {{.name = "empty"}, "empty", ""},
      {{.name = "flat", .deflate = true}, "flat", ""},
      {{.name = "packed", .data = "text", .deflate = true}, "packed", "text"},
      {{.name = "stream", .data = "x", .deflate = true, .descriptor = true}, "stream", "x"},
      {{.name = "wide", .data = "x", .zip64 = true}, "wide", "x"},
      {{.name = "d/e/", .mode = kFolder}, "d/e", "/"},
      {{.name = "no slash", .mode = kFolder}, "no slash", "/"},
      {{.name = "d/f", .data = "x"}, "d/f", "x"},
      {{.name = "d/", .mode = kFolder}, "d", "/"},
      {{.name = "./dots//./f", .data = "x"}, "dots/f", "x"},
      {{.name = "out", .data = "../../etc", .mode = kLink}, "out", "-> ../../etc"},
      {{.name = "far", .data = "/nowhere", .mode = kLink}, "far", "-> /nowhere"},
      {{.name = "deep", .data = "a/b/c", .mode = kLink, .deflate = true}, "deep", "-> a/b/c"},
      // The last one of the same name wins.
      {{.name = "same", .data = "1"}},
      {{.name = "./same", .data = "2"}},
      {{.name = "same", .data = "3"}, "same", "3"},
      // Both normal forms of a name, without the flag of UTF-8.
      {{.name = "\xC3\xA9", .data = "1"}, "\xC3\xA9", "1"},
      {{.name = "e\xCC\x81", .data = "2"}, "e\xCC\x81", "2"},
      // Code page 437, and bytes that aren't what the flag says.
      {{.name = "\x81 \xE1 \x9B", .data = "x"}, "ü ß ¢", "x"},
      {{.name = "\x81", .data = "x", .flags = 1U << 11U}, "\x81", "x"},
      {{.name = "?", .data = "x", .extra = UnicodeNameField("?", "ж")}, "ж", "x"},
      {{.name = "!", .data = "x", .extra = UnicodeNameField("?", "ж")}, "!", "x"},
      // Companion files of a Mac's archive are dropped, and nothing else that looks like them.
      {{.name = "__MACOSX/._same", .data = "x"}},
      {{.name = "__MACOSX/"}},
      {{.name = "d/__MACOSX", .data = "x"}, "d/__MACOSX", "x"},
      {{.name = "._own", .data = "x"}, "._own", "x"},
  };
  std::vector<ZipEntry> entries;
  Contents expected{{"dots", "/"}};
  for (const Kept& row : rows) {
    entries.push_back(row.entry);
    if (row.path != nullptr) {
      expected[row.path] = row.content;
    }
  }
  const std::string before(1000, '#');
  for (const ZipLayout& layout :
       {ZipLayout(), ZipLayout{.zip64End = true}, ZipLayout{.prefix = before},
        ZipLayout{.prefix = before, .zip64End = true}}) {
    const ScratchFolder scratch;
    EXPECT_EQ(Expand(scratch, entries, layout).Line(), "");
    EXPECT_EQ(Tree(scratch / "t"), expected);
  }
}

// With the 64-bit record, and without it with a count that has wrapped around.
TEST(ExpandInto, MoreEntriesThan16BitsCountAreKept) {
  std::vector<ZipEntry> entries(65'600, {.name = "__MACOSX/._x"});
  entries.push_back({.name = "last", .data = "x"});
  for (const ZipLayout& layout : {ZipLayout{.zip64End = true}, ZipLayout{.count = 65}}) {
    const ScratchFolder scratch;
    EXPECT_EQ(Expand(scratch, entries, layout).Line(), "");
    EXPECT_EQ(Tree(scratch / "t"), (Contents{{"last", "x"}}));
  }
}

// Data that deflate can only wrap into blocks as they are.
std::string RandomBytes(std::size_t size) {
  std::mt19937 random(1);
  std::string bytes(size, '\0');
  std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
  return bytes;
}

// Every way that data take, at and around the borders between them.
TEST(ExpandInto, BytesOfEverySizeAreRight) {
  std::vector<ZipEntry> entries{
      {.name = "zeros", .data = std::string(8'000'000, '\0'), .deflate = true}};
  for (const std::size_t border : {1UL << 18U, 1UL << 20U, 4UL << 20U}) {
    for (const std::size_t size : {border - 1, border, border + 1}) {
      const std::string data = RandomBytes(size);
      entries.push_back({.name = "s" + std::to_string(size), .data = data});
      entries.push_back({.name = "d" + std::to_string(size), .data = data, .deflate = true});
    }
  }
  const ScratchFolder scratch;
  const Result result = Expand(scratch, entries);
  EXPECT_EQ(result.Line(), "");
  EXPECT_EQ(result.expanded, entries.size());
  for (const ZipEntry& entry : entries) {
    EXPECT_TRUE(ReadFile(scratch / ("t/" + entry.name)) == entry.data) << entry.name;
  }
}

TEST(ExpandInto, ModesAreKeptWithoutSetIdAndSticky) {
  const ScratchFolder scratch;
  std::vector<ZipEntry> entries{{.name = "closed/", .mode = 0040555},
                                {.name = "closed/in", .data = "x", .mode = 0100444}};
  for (const std::uint32_t mode : {0755U, 0644U, 0600U, 0666U, 0444U, 0000U, 07751U}) {
    entries.push_back({.name = "f" + std::to_string(mode), .data = "x", .mode = 0100000 | mode});
    entries.push_back({.name = "d" + std::to_string(mode) + "/", .mode = 0040000 | mode});
  }
  EXPECT_EQ(Expand(scratch, entries).Line(), "");
  for (const ZipEntry& entry : entries) {
    EXPECT_EQ(fs::status(scratch / ("t/" + entry.name)).permissions(), fs::perms{entry.mode & 0777})
        << entry.name;
  }
  // Over what may not be written in, and from a system without these modes.
  entries.resize(2);
  entries.push_back({.name = "closed/dos", .data = "x", .mode = 1, .host = 0});
  EXPECT_EQ(Expand(scratch, entries).Line(), "");
  EXPECT_EQ(fs::status(scratch / "t/closed").permissions(), fs::perms{0555});
  EXPECT_EQ(ReadFile(scratch / "t/closed/dos"), "x");
}

TEST(ExpandInto, TimesAreKept) {
  constexpr std::time_t kTime = 1'600'000'001;
  const std::string exact = ExtraField(0x5455, Bytes({{1, 1}, {kTime, 4}}));
  const std::string old = ExtraField(0x5855, Bytes({{7, 4}, {kTime, 4}}));
  const std::string ntfs = ExtraField(
      0x000A, Bytes({{0, 4}, {1, 2}, {24, 2}, {(11'644'473'600 + kTime) * 10'000'000, 24}}));
  const std::vector<ZipEntry> entries = {
      {.name = "d/exact", .data = "x", .extra = exact},
      {.name = "d/old", .data = "x", .extra = old},
      {.name = "d/ntfs", .data = "x", .extra = ntfs},
      {.name = "d/link", .data = "x", .mode = kLink, .extra = exact},
      {.name = "d/big", .data = Noise(5'000'000), .extra = exact},
      {.name = "d/", .mode = kFolder, .extra = exact},
      {.name = "local", .data = "x"}};
  const ScratchFolder scratch;
  ASSERT_EQ(Expand(scratch, entries).Line(), "");
  std::tm day{};
  (void)::strptime("2024-03-09", "%Y-%m-%d", &day);
  day.tm_isdst = -1;
  for (const ZipEntry& entry : entries) {
    struct stat status {};
    ASSERT_EQ(::lstat((scratch / ("t/" + entry.name)).c_str(), &status), 0) << entry.name;
    EXPECT_EQ(status.st_mtime, entry.extra.empty() ? std::mktime(&day) : kTime) << entry.name;
  }
}

// A disk that lets nobody but its owner set modes and times, and disks that fail otherwise.
TEST(ExpandInto, FileIsKeptUnlessItsDataMayBeLost) {
  const std::vector<ZipEntry> entries = {{.name = "d/", .mode = 0040700},
                                         {.name = "d/small", .data = "x", .mode = 0100666},
                                         {.name = "d/big", .data = Noise(5'000'000)},
                                         {.name = "l", .data = "d", .mode = kLink}};
  const Contents all{{"d", "/"}, {"d/small", "x"}, {"d/big", Noise(5'000'000)}, {"l", "-> d"}};
  const Contents none{{"d", "/"}, {"l", "-> d"}};
  struct Disk {
    const char* call;
    std::string why;
    const Contents& expected;
  };
  for (const Disk& row : {Disk{"fchmod", "d: its mode could not be set", all},
                          Disk{"futimens", "d: its time could not be set", all},
                          Disk{"utimensat", "l: its time could not be set", all},
                          Disk{"close", "d/small: Operation not permitted (and 1 more)", none}}) {
    SCOPED_TRACE(row.call);
    const ScratchFolder scratch;
    SystemCalls calls;
    calls.failing = {{row.call, EPERM}};
    const Result result = Expand(scratch, entries);
    EXPECT_NE(result.Line().find(row.why), std::string::npos) << result.Line();
    EXPECT_EQ(result.expanded, row.expected.size());
    EXPECT_EQ(Tree(scratch / "t"), row.expected);
  }
}

// On disks with and without unnamed files. What a killed run has left is replaced; a link or folder
// of that name was made by someone else.
TEST(ExpandInto, LargeFileReplacesTheOldOneOnlyWhenWhole) {
  const std::string data = Noise(5'000'000);
  const std::uint32_t wrong = 1;
  const std::string part = ".zephin-expanding-" + std::to_string(Crc("f"));
  struct Case {
    bool noUnnamed;
    std::optional<std::uint32_t> crc;
    const char* failing;
    std::string leftover;
    Contents expected;
  };
  for (const Case& row :
       {Case{false, {}, "", "", {{"f", data}}}, Case{true, {}, "", "", {{"f", data}}},
        Case{true, {}, "", part, {{"f", data}}}, Case{false, {}, "", part, {{"f", data}}},
        Case{false, wrong, "", "", {{"f", "old"}}}, Case{true, wrong, "", "", {{"f", "old"}}},
        Case{false, {}, "close", "", {{"f", "old"}}}, Case{true, {}, "close", "", {{"f", "old"}}},
        Case{true, {}, "renameat2", "", {{"f", "old"}}},
        Case{false, {}, "linkat", "", {{"f", "old"}}},
        Case{true, {}, "", part + "/d", {{"f", "old"}, {part, "/"}, {part + "/d", "old"}}}}) {
    SCOPED_TRACE(std::string(row.failing) + (row.noUnnamed ? ", no unnamed, " : ", ") +
                 row.leftover);
    const ScratchFolder scratch;
    WriteFile(scratch / "t/f", "old");
    if (!row.leftover.empty()) {
      WriteFile(scratch / ("t/" + row.leftover), "old");
    }
    std::string seen;
    SystemCalls calls;
    calls.noUnnamedFiles = row.noUnnamed;
    calls.failing = {{row.failing, EIO}};
    calls.before[part] = [&] { seen = ReadFile(scratch / "t/f"); };
    const bool whole = row.expected.at("f") == data;
    EXPECT_EQ(Expand(scratch, {{.name = "f", .data = data, .crc = row.crc}}).Complete(), whole);
    EXPECT_EQ(Tree(scratch / "t"), row.expected);
    EXPECT_NE(seen, data);
  }
}

// On a disk that ignores the case of letters. Each pair is of other sizes and kinds.
TEST(ExpandInto, EntryNeverReplacesAnotherOne) {
  const char* const same = "has the same name as another entry on this disk";
  const ZipEntry small{.name = "readme", .data = "x"};
  const ZipEntry large{.name = "readme", .data = Noise(5'000'000)};
  const ZipEntry link{.name = "readme", .data = "to", .mode = kLink};
  const std::vector<std::tuple<ZipEntry, ZipEntry, std::string>> rows = {
      {small, small, "x"}, {small, link, "x"}, {large, small, large.data}, {link, link, "-> to"}};
  for (auto [first, second, content] : rows) {
    for (const bool existed : {false, true}) {
      SCOPED_TRACE(content.substr(0, 9) + (existed ? ", replaced" : ""));
      second.name = "README";
      const ScratchFolder scratch;
      if (existed) {
        WriteFile(scratch / "t/readme", "old");
      }
      SystemCalls calls;
      calls.ignoresCase = true;
      const Result result = Expand(scratch, {first, second});
      EXPECT_NE(result.Line().find(same), std::string::npos) << result.Line();
      EXPECT_EQ(result.faults, 1);
      EXPECT_EQ(Tree(scratch / "t"), (Contents{{"readme", content}}));
    }
  }
}

TEST(ExpandInto, FolderOfAnotherUserKeepsItsMode) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "only root can make a folder of another user";
  }
  const ScratchFolder ofRoot;
  const ScratchFolder scratch;
  fs::create_directories(ofRoot / "t/d");
  for (const auto& path : {ofRoot.Path(), ofRoot / "t", ofRoot / "t/d"}) {
    fs::permissions(path, fs::perms::all);
  }
  WriteFile(scratch / "a.zip", MakeZip({{.name = "d/", .mode = 0040750},
                                        {.name = "d/f", .data = "x", .mode = 0100600}}));
  const PlainUser user(scratch.Path());
  EXPECT_EQ(ExpandInto(scratch / "a.zip", ofRoot / "t").Line(), "");
  EXPECT_EQ(ReadFile(ofRoot / "t/d/f"), "x");
  EXPECT_EQ(fs::status(ofRoot / "t/d").permissions(), fs::perms::all);
}

TEST(ExpandInto, FolderIsMadeBeforeTheArchiveIsRead) {
  const ScratchFolder scratch;
  const std::string none = scratch / "none.zip";
  EXPECT_EQ(ExpandInto(none, scratch / "x/y").Line(), none + ": No such file or directory");
  EXPECT_TRUE(fs::is_directory(scratch / "x/y"));
  EXPECT_EQ(ExpandInto(scratch / "x", scratch / "t").Line(),
            (scratch / "x").string() + ": Is a directory");
  EXPECT_EQ(Expand(scratch, {}).Line(), "");
  EXPECT_EQ(ExpandInto(scratch / "a.zip", scratch / "a.zip/t").faults, 1);
}

// In each row what stands in the folder, where it leads (what leads nowhere is another name of a
// file outside), what is told, and what stands there then.
TEST(ExpandInto, WhatStandsIsMergedIntoAndLeadsNowhere) {
  const auto with = [](Contents others) {
    others.insert({{"f", "new"}, {"d", "/"}, {"d/g", "new"}, {"l", "-> f"}});
    return others;
  };
  const char* const inTheWay = "d/g: a file or link is in the place of its folder";
  const std::vector<std::tuple<const char*, const char*, const char*, Contents>> rows = {
      {"d/other", "", "", with({{"d/other", "old"}})},
      {"f", "", "", with({})},
      {"f", "../outside/kept", "", with({})},
      {"f", "../outside/none", "", with({})},
      {"l", "", "", with({})},
      {"d", "../outside", inTheWay, {{"f", "new"}, {"d", "-> ../outside"}, {"l", "-> f"}}},
      {"d", "", inTheWay, {{"f", "new"}, {"d", "old"}, {"l", "-> f"}}},
      {"f/in", "", "f: Is a directory", with({{"f", "/"}, {"f/in", "old"}})},
      {"l/in", "", "l: Is a directory", with({{"l", "/"}, {"l/in", "old"}})},
  };
  for (const auto& [path, linkTo, why, expected] : rows) {
    SCOPED_TRACE(std::string(path) + " -> " + linkTo);
    const ScratchFolder scratch;
    const fs::path standing = scratch / "t" / path;
    WriteFile(scratch / "outside/kept", "old");
    fs::create_directories(standing.parent_path());
    if (*linkTo == '\0') {
      fs::create_hard_link(scratch / "outside/kept", standing);
    } else {
      fs::create_symlink(linkTo, standing);
    }
    EXPECT_EQ(Expand(scratch, {{.name = "f", .data = "new"},
                               {.name = "d/g", .data = "new"},
                               {.name = "l", .data = "f", .mode = kLink}})
                  .Line(),
              why);
    EXPECT_EQ(Tree(scratch / "t"), expected);
    EXPECT_EQ(Tree(scratch / "outside"), (Contents{{"kept", "old"}}));
  }
}

TEST(ExpandInto, DiskThatFillsLeavesOnlyWholeFilesAndTells) {
  const ScratchFolder scratch;
  WriteFile(scratch / "a.zip",
            MakeZip({{.name = "small", .data = "x"},
                     {.name = "whole", .data = Noise(200'000)},
                     {.name = "blocks", .data = Noise(900'000), .deflate = true},
                     {.name = "alone", .data = Noise(2'000'000), .deflate = true},
                     {.name = "shared", .data = Noise(9'000'000)}}));
  const FullDisk disk(100'000);
  EXPECT_EQ(ExpandInto(scratch / "a.zip", scratch / "t").Line(),
            "whole: File too large (and 3 more)");
  EXPECT_EQ(Tree(scratch / "t"), (Contents{{"small", "x"}}));
}

// On a disk with so many free blocks of 4096 bytes and so many free items. What will be replaced
// counts as free.
TEST(ExpandInto, WhatDoesNotFitIsRefusedBeforeTheFirstByte) {
  const std::vector<ZipEntry> entries = {{.name = "a/b/f", .data = std::string(4097, 'x')},
                                         {.name = "l", .data = "to", .mode = kLink}};
  struct Case {
    unsigned long blocks;
    unsigned long items;
    const char* existing;
    const char* why;
  };
  for (const Case& row :
       {Case{5, 4, "", ""},
        Case{4, 4, "", "needs 20480 bytes, but only 16384 are free on the disk"},
        Case{5, 3, "", "needs 4 files and folders, but only 3 are free"}, Case{4, 3, "t/a/x", ""},
        Case{3, 3, "t/a/x", "needs 20480 bytes, but only 12288"}}) {
    SCOPED_TRACE(std::to_string(row.blocks) + ", " + std::to_string(row.items) + row.existing);
    const ScratchFolder scratch;
    if (*row.existing != '\0') {
      WriteFile(scratch / row.existing, "old");
    }
    SystemCalls calls;
    calls.room = {row.blocks, row.items};
    const std::string line = Expand(scratch, entries).Line();
    EXPECT_NE(line.find(row.why), std::string::npos) << line;
    EXPECT_EQ(line.empty(), *row.why == '\0') << line;
    EXPECT_EQ(fs::exists(scratch / "t/a/b/f"), *row.why == '\0');
  }
}

TEST(ExpandInto, FewNamesCannotAskForManyFolders) {
  std::vector<ZipEntry> entries;
  for (int i = 0; i < 20; ++i) {
    std::string name = std::to_string(i);
    while (name.size() < 3000) {
      name += "/d";
    }
    entries.push_back({.name = name});
  }
  const ScratchFolder scratch;
  EXPECT_NE(Expand(scratch, entries).Line().find("more folders than"), std::string::npos);
  EXPECT_EQ(Tree(scratch / "t"), Contents());
  // The same in many honest names.
  entries.clear();
  for (int i = 0; i < 200; ++i) {
    entries.push_back({.name = "d/e/" + std::to_string(i) + "/folder/of/its/own/f"});
  }
  EXPECT_EQ(Expand(scratch, entries).Line(), "");
}

}  // namespace
}  // namespace zephin::test
