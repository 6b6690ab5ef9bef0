// What an expansion into a folder keeps of an archive and of what exists in the folder.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <ctime>
#include <random>

#include "platform/expander/expander.h"
#include "tests/platform/expander/zip_writer.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using expander::ExpandInto;
using expander::Result;

struct Kept {
  ZipEntry entry;
  // The path and content of the item after the expansion; null if there is none, or no new one.
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
      {{.name = "offset", .data = "x", .wideOffset = true}, "offset", "x"},
      {{.name = "d/e/", .mode = kFolder}, "d/e", "/"},
      {{.name = "no slash", .mode = kFolder}, "no slash", "/"},
      {{.name = "data/", .data = "x", .mode = kFolder}, "data", "/"},
      {{.name = "encrypted/", .data = "x", .mode = kFolder, .flags = 1}, "encrypted", "/"},
      {{.name = R"(back\slash)", .data = "x"}, R"(back\slash)", "x"},
      {{.name = "d/f", .data = "x"}, "d/f", "x"},
      {{.name = "d/", .mode = kFolder}, "d", "/"},
      {{.name = "./dots//f", .data = "x"}, "dots/f", "x"},
      {{.name = "c/./g", .data = "x"}, "c/g", "x"},
      {{.name = "c/.", .mode = kFolder}, "c", "/"},
      {{.name = "k//", .mode = kFolder}, "k", "/"},
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
      // Half of a pair of UTF-16 is no letter in UTF-8.
      {{.name = "\xED\xA0\x80", .data = "x"}, "φáÇ", "x"},
      // A name in another field, one made for another name, and one of an unknown version.
      {{.name = "?", .data = "x", .extra = UnicodeNameField("?", "ж")}, "ж", "x"},
      {{.name = "!", .data = "x", .extra = UnicodeNameField("?", "ж")}, "!", "x"},
      {{.name = "%", .data = "x", .extra = UnicodeNameField("%", "\xE1")}, "\xE1", "x"},
      {{.name = "@", .data = "x", .extra = UnicodeNameField("@", "ж", 2)}, "@", "x"},
      {{.name = "dos", .mode = 0, .dosAttributes = 0x10, .host = 0}, "dos", "/"},
      {{.name = "dos file", .data = "x", .mode = 0, .dosAttributes = 0x10, .host = 0},
       "dos file",
       "x"},
      // Companion files of a Mac's archive are dropped, and nothing else that looks like them.
      {{.name = "__MACOSX/._same", .data = "x"}},
      {{.name = "__MACOSX/"}},
      {{.name = "d/__MACOSX", .data = "x"}, "d/__MACOSX", "x"},
      {{.name = "__MACOSX2", .data = "x"}, "__MACOSX2", "x"},
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
    EXPECT_EQ(ExpandZip(scratch, entries, layout).Line(), "");
    EXPECT_EQ(Tree(scratch / "t"), expected);
  }
}

TEST(ExpandInto, BackslashesAreFoldersIfAllNamesUseThemSo) {
  const Contents folders{{"d", "/"}, {"d/e", "/"}, {"d/f", "x"}};
  const std::vector<std::tuple<std::string, std::uint8_t, Contents>> rows = {
      {R"(d\g)", 3, {{"d/g", "x"}}}, {"g", 0, {{"g", "x"}}}, {"g", 10, {{"g", "x"}}},
      {"g", 14, {{"g", "x"}}},       {"g", 3, {}},           {"g/h", 0, {}},
  };
  for (const auto& [name, host, more] : rows) {
    SCOPED_TRACE(name);
    const ScratchFolder scratch;
    EXPECT_EQ(ExpandZip(scratch, {{.name = R"(d\f)", .data = "x", .mode = 0, .host = host},
                                  {.name = R"(d\e\)", .mode = 0, .host = host},
                                  {.name = name, .data = "x", .mode = 0, .host = host}})
                  .Line(),
              "");
    Contents expected = folders;
    expected.insert(more.begin(), more.end());
    if (more.empty()) {
      expected = {{R"(d\f)", "x"}, {R"(d\e\)", ""}, {name, "x"}};
      if (name == "g/h") {
        expected.insert({"g", "/"});
      }
    }
    EXPECT_EQ(Tree(scratch / "t"), expected);
  }
}

// With the 64-bit record, and without it with a count that has wrapped around.
TEST(ExpandInto, MoreEntriesThan16BitsCountAreKept) {
  std::vector<ZipEntry> entries(65'600, {.name = "__MACOSX/._x"});
  entries.push_back({.name = "last", .data = "x"});
  for (const ZipLayout& layout : {ZipLayout{.zip64End = true}, ZipLayout{.count = 65}}) {
    const ScratchFolder scratch;
    EXPECT_EQ(ExpandZip(scratch, entries, layout).Line(), "");
    EXPECT_EQ(Tree(scratch / "t"), (Contents{{"last", "x"}}));
  }
}

// The archive holds another one, whose end must not be taken for its own.
TEST(ExpandInto, EndOfTheArchiveIsFound) {
  constexpr std::size_t kEnd = 22;
  const std::string inner = MakeZip({{.name = "inner"}});
  const std::string whole = MakeZip({{.name = "x", .data = inner}});
  const std::string body = whole.substr(0, whole.size() - kEnd);
  const std::string withoutComment = whole.substr(0, whole.size() - 2);
  const std::string comment = inner + "c";
  const std::string longest(0xFFFF, 'c');
  for (const std::string& bytes :
       {withoutComment + Bytes({{longest.size(), 2}}) + longest,
        withoutComment + Bytes({{comment.size(), 2}}) + comment, whole + "padding",
        body + "signature" + whole.substr(body.size())}) {
    const ScratchFolder scratch;
    WriteFile(scratch / "a.zip", bytes);
    EXPECT_EQ(ExpandInto(scratch / "a.zip", scratch / "t").Line(), "");
    EXPECT_EQ(Tree(scratch / "t"), (Contents{{"x", inner}}));
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
  // Packed as tightly as deflate can.
  const std::string zeros(8'000'000, '\0');
  std::vector<ZipEntry> entries{
      {.name = "zeros", .data = zeros, .deflate = true, .packed = Deflate(zeros, 12)}};
  for (const std::size_t border : {1UL << 18U, 1UL << 20U, 4UL << 20U}) {
    for (const std::size_t size : {border - 1, border, border + 1}) {
      const std::string data = RandomBytes(size);
      entries.push_back({.name = "s" + std::to_string(size), .data = data});
      entries.push_back({.name = "d" + std::to_string(size), .data = data, .deflate = true});
    }
  }
  const ScratchFolder scratch;
  const Result result = ExpandZip(scratch, entries);
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
  EXPECT_EQ(ExpandZip(scratch, entries).Line(), "");
  for (const ZipEntry& entry : entries) {
    EXPECT_EQ(fs::status(scratch / ("t/" + entry.name)).permissions(), fs::perms{entry.mode & 0777})
        << entry.name;
  }
  // Over what may not be written in, and from systems of other modes.
  entries.resize(2);
  entries.insert(entries.end(),
                 {{.name = "closed/dos", .data = "x", .mode = 1, .dosAttributes = 1, .host = 0},
                  {.name = "closed/read-only/", .mode = 0, .dosAttributes = 1, .host = 0},
                  {.name = "closed/mac", .data = "x", .mode = 0100640, .host = 19}});
  EXPECT_EQ(ExpandZip(scratch, entries).Line(), "");
  EXPECT_EQ(fs::status(scratch / "t/closed").permissions(), fs::perms{0555});
  EXPECT_EQ(fs::status(scratch / "t/closed/dos").permissions(), fs::perms{0444});
  EXPECT_EQ(fs::status(scratch / "t/closed/mac").permissions(), fs::perms{0640});
  EXPECT_NE(fs::status(scratch / "t/closed/read-only").permissions() & fs::perms::owner_write,
            fs::perms::none);
}

TEST(ExpandInto, TimesAreKept) {
  constexpr std::time_t kTime = 1'600'000'001;
  const auto day = [](const char* text) {
    std::tm fields{};
    (void)::strptime(text, "%Y-%m-%d %T", &fields);
    fields.tm_isdst = -1;
    return std::mktime(&fields);
  };
  const std::string exact = ExtraField(0x5455, Bytes({{1, 1}, {kTime, 4}}));
  const std::string old = ExtraField(0x5855, Bytes({{7, 4}, {kTime, 4}}));
  const std::string other = ExtraField(0x5855, Bytes({{7, 4}, {7, 4}}));
  const std::string ntfs = ExtraField(
      0x000A, Bytes({{0, 4}, {1, 2}, {24, 2}, {(11'644'473'600 + kTime) * 10'000'000 + 5, 24}}));
  const std::vector<std::pair<ZipEntry, std::time_t>> rows = {
      {{.name = "d/exact", .data = "x", .extra = exact + other}, kTime},
      {{.name = "d/old", .data = "x", .extra = old}, kTime},
      {{.name = "d/ntfs", .data = "x", .extra = ntfs}, kTime},
      {{.name = "d/link", .data = "x", .mode = kLink, .extra = exact}, kTime},
      {{.name = "d/big", .data = Noise(5'000'000), .extra = exact}, kTime},
      {{.name = "d/", .mode = kFolder, .extra = exact}, kTime},
      {{.name = "local", .data = "x"}, day("2024-03-09 13:14:16")},
      {{.name = "none", .data = "x", .time = 0}, day("1980-01-01 00:00:00")}};
  std::vector<ZipEntry> entries;
  for (const auto& [entry, time] : rows) {
    entries.push_back(entry);
  }
  const ScratchFolder scratch;
  ASSERT_EQ(ExpandZip(scratch, entries).Line(), "");
  for (const auto& [entry, time] : rows) {
    struct stat status {};
    ASSERT_EQ(::lstat((scratch / ("t/" + entry.name)).c_str(), &status), 0) << entry.name;
    EXPECT_EQ(status.st_mtim.tv_sec, time) << entry.name;
    EXPECT_EQ(status.st_mtim.tv_nsec, entry.extra == ntfs ? 500 : 0) << entry.name;
  }
}

TEST(ExpandInto, PathsAreAsLongAsTheUserCanOpen) {
  const ScratchFolder scratch;
  const std::size_t room = PATH_MAX - 1 - (scratch / "t/").string().size();
  std::string name;
  while (name.size() + 200 < room) {
    name += std::string(199, 'd') + "/";
  }
  name.resize(room, 'f');
  EXPECT_EQ(ExpandZip(scratch, {{.name = name, .data = "x"}}).Line(), "");
  EXPECT_EQ(ReadFile(scratch / ("t/" + name)), "x");
  EXPECT_NE(ExpandZip(scratch, {{.name = name + "f"}}).Line().find("longer than a path can be"),
            std::string::npos);
}

TEST(ExpandInto, FolderIsMadeBeforeTheArchiveIsRead) {
  const ScratchFolder scratch;
  const std::string none = scratch / "none.zip";
  EXPECT_EQ(ExpandInto(none, scratch / "x/y").Line(), none + ": No such file or directory");
  EXPECT_TRUE(fs::is_directory(scratch / "x/y"));
  EXPECT_EQ(ExpandInto(scratch / "x", scratch / "t").Line(),
            (scratch / "x").string() + ": Is a directory");
  EXPECT_EQ(ExpandZip(scratch, {}).Line(), "");
  EXPECT_EQ(ExpandInto(scratch / "a.zip", scratch / "a.zip/t").faults, 1);
}

// In each row: the path of an item that exists already, the target of its link (without one it is a
// hard link to a file outside), the message, and the contents afterwards.
TEST(ExpandInto, ExistingItemsAreMergedIntoAndLinksAreNotFollowed) {
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
    const fs::path existing = scratch / "t" / path;
    WriteFile(scratch / "outside/kept", "old");
    fs::create_directories(existing.parent_path());
    if (*linkTo == '\0') {
      fs::create_hard_link(scratch / "outside/kept", existing);
    } else {
      fs::create_symlink(linkTo, existing);
    }
    EXPECT_EQ(ExpandZip(scratch, {{.name = "f", .data = "new"},
                                  {.name = "d/g", .data = "new"},
                                  {.name = "l", .data = "f", .mode = kLink}})
                  .Line(),
              why);
    EXPECT_EQ(Tree(scratch / "t"), expected);
    EXPECT_EQ(Tree(scratch / "outside"), (Contents{{"kept", "old"}}));
  }
}

}  // namespace
}  // namespace zephin::test
