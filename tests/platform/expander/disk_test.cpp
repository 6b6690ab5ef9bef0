// Expansions on disks that are full, fail, or lack a feature.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>

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

// A disk that lets nobody but its owner set modes and times, and disks that fail otherwise.
TEST(Disk, FileIsKeptUnlessItsDataMayBeLost) {
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
    expander::Report report;
    WriteFile(scratch / "a.zip", MakeZip(entries));
    const Result result = ExpandInto(scratch / "a.zip", scratch / "t", report);
    EXPECT_NE(result.Line().find(row.why), std::string::npos) << result.Line();
    EXPECT_EQ(result.expanded, row.expected.size());
    EXPECT_EQ(report.Summary().missing, entries.size() - row.expected.size());
    EXPECT_EQ(Tree(scratch / "t"), row.expected);
  }
}

// On disks with and without unnamed files. What a killed run has left is replaced; a link or folder
// of that name was made by someone else.
TEST(Disk, LargeFileReplacesTheOldOneOnlyWhenWhole) {
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
    EXPECT_EQ(ExpandZip(scratch, {{.name = "f", .data = data, .crc = row.crc}}).Complete(), whole);
    EXPECT_EQ(Tree(scratch / "t"), row.expected);
    EXPECT_NE(seen, data);
  }
}

TEST(Disk, TemporaryFileOfARunningExpansionIsLeftAlone) {
  const std::string part = ".zephin-expanding-" + std::to_string(Crc("f"));
  const ScratchFolder scratch;
  WriteFile(scratch / ("t/" + part), "theirs");
  const int held = ::open((scratch / ("t/" + part)).c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(::flock(held, LOCK_EX), 0);
  SystemCalls calls;
  calls.noUnnamedFiles = true;
  EXPECT_FALSE(ExpandZip(scratch, {{.name = "f", .data = Noise(5'000'000)}}).Complete());
  EXPECT_EQ(Tree(scratch / "t"), (Contents{{part, "theirs"}}));
  (void)::close(held);
}

// On a disk that ignores the case of letters. Each pair is of other sizes and kinds.
TEST(Disk, EntryNeverReplacesAnotherOne) {
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
      const Result result = ExpandZip(scratch, {first, second});
      EXPECT_NE(result.Line().find(same), std::string::npos) << result.Line();
      EXPECT_EQ(result.faults, 1);
      EXPECT_EQ(Tree(scratch / "t"), (Contents{{"readme", content}}));
    }
  }
}

// In each row the mode of a folder that exists, the archive's mode for it if it has one, and the
// mode in the end. As an ordinary user, whom a closed folder stops.
TEST(Disk, ClosedFolderIsOpenWhileItsContentsArrive) {
  for (const auto& [before, stated, after] :
       {std::tuple(0500U, 0U, 0500U), std::tuple(0600U, 0U, 0600U), std::tuple(0500U, 0700U, 0700U),
        std::tuple(0700U, 0755U, 0755U)}) {
    SCOPED_TRACE(before);
    const ScratchFolder scratch;
    fs::create_directories(scratch / "t/d");
    std::vector<ZipEntry> entries = {{.name = "d/f", .data = "x"}};
    if (stated != 0) {
      entries.push_back({.name = "d/", .mode = 0040000 | stated});
    }
    WriteFile(scratch / "a.zip", MakeZip(entries));
    fs::permissions(scratch / "t/d", fs::perms{before});
    {
      const PlainUser user(scratch.Path());
      EXPECT_EQ(ExpandInto(scratch / "a.zip", scratch / "t").Line(), "");
    }
    EXPECT_EQ(fs::status(scratch / "t/d").permissions(), fs::perms{after});
    fs::permissions(scratch / "t/d", fs::perms::owner_all);
    EXPECT_EQ(ReadFile(scratch / "t/d/f"), "x");
  }
}

TEST(Disk, FolderOfAnotherUserKeepsItsMode) {
  if (::geteuid() != 0) {
    // An ordinary user can't make a folder that belongs to another: the system lets only root.
    GTEST_SKIP() << "only root may give a folder away";
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

TEST(Disk, DiskThatFillsLeavesOnlyWholeFilesAndTells) {
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
TEST(Disk, WhatDoesNotFitIsRefusedBeforeTheFirstByte) {
  const std::vector<ZipEntry> entries = {{.name = "a/b/f", .data = std::string(4097, 'x')},
                                         {.name = "l", .data = "to", .mode = kLink}};
  struct Case {
    unsigned long blocks;
    unsigned long items;
    const char* existing;
    const char* why;
    // What exists has another name too, so that its space stays taken.
    bool linked = false;
  };
  for (const Case& row :
       {Case{5, 4, "", ""},
        Case{4, 4, "", "needs 20480 bytes, but only 16384 are free on the disk"},
        Case{5, 3, "", "needs 4 files and folders, but only 3 are free"}, Case{4, 3, "t/a/x", ""},
        Case{4, 0, "t/a/x", ""}, Case{2, 4, "t/a/b/f", ""},
        Case{2, 4, "t/a/b/f", "needs 20480 bytes, but only 8192", true},
        Case{3, 3, "t/a/x", "needs 20480 bytes, but only 12288"}}) {
    SCOPED_TRACE(std::to_string(row.blocks) + ", " + std::to_string(row.items) + row.existing);
    const ScratchFolder scratch;
    if (*row.existing != '\0') {
      WriteFile(scratch / row.existing, std::string(4097, 'o'));
    }
    if (row.linked) {
      fs::create_hard_link(scratch / row.existing, scratch / "linked");
    }
    SystemCalls calls;
    calls.room = {row.blocks, row.items};
    const std::string line = ExpandZip(scratch, entries).Line();
    EXPECT_NE(line.find(row.why), std::string::npos) << line;
    EXPECT_EQ(line.empty(), *row.why == '\0') << line;
    EXPECT_EQ(fs::exists(scratch / "t/a/b/f"), *row.why == '\0' || row.linked);
    // Nothing is replaced beside the archive.
    EXPECT_EQ(expander::ExpandBeside(scratch / "a.zip").Complete(),
              row.blocks == 5 && row.items == 4);
  }
}

TEST(Disk, FewNamesCannotAskForManyFolders) {
  std::vector<ZipEntry> entries;
  for (int i = 0; i < 20; ++i) {
    std::string name = std::to_string(i);
    while (name.size() < 3000) {
      name += "/d";
    }
    entries.push_back({.name = name});
  }
  const ScratchFolder scratch;
  EXPECT_NE(ExpandZip(scratch, entries).Line().find("more folders than"), std::string::npos);
  EXPECT_EQ(Tree(scratch / "t"), Contents());
  // The same in many honest names.
  entries.clear();
  for (int i = 0; i < 200; ++i) {
    entries.push_back({.name = "d/e/" + std::to_string(i) + "/folder/of/its/own/f"});
  }
  EXPECT_EQ(ExpandZip(scratch, entries).Line(), "");
}

}  // namespace
}  // namespace zephin::test
