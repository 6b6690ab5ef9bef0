// Archives that are made to do harm or are damaged. Each has a good file too. After each expansion,
// into a folder and beside the archive, the tests check the faults, what is left in the folder, and
// that nothing around the folder has changed.
#include <gtest/gtest.h>

#include <fstream>

#include "platform/expander/expander.h"
#include "tests/platform/expander/system_calls.h"
#include "tests/platform/expander/zip_writer.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {
namespace {

using expander::ExpandBeside;
using expander::ExpandInto;
using expander::Reason;

const ZipEntry kGood{.name = "good.txt", .data = "good"};

struct Hostile {
  // After the good file.
  std::vector<ZipEntry> entries;
  // Part of the line on standard error.
  const char* why;
  std::uint64_t faults = 1;
  // What is left besides the good file.
  Contents left = {};
  ZipLayout layout = {};
  // The reason that the window shows.
  Reason reason = Reason::Damaged;
};

void ExpectContained(const std::vector<Hostile>& rows) {
  for (const Hostile& row : rows) {
    for (const bool beside : {false, true}) {
      SCOPED_TRACE("the last entry is " + row.entries.back().name + (beside ? ", beside" : ""));
      const ScratchFolder scratch;
      const std::string zip = scratch / "a.zip";
      std::vector<ZipEntry> entries{kGood};
      entries.insert(entries.end(), row.entries.begin(), row.entries.end());
      WriteFile(zip, MakeZip(entries, row.layout));
      WriteFile(scratch / "sentinel", "outside");

      expander::Report report;
      const expander::Result result =
          beside ? ExpandBeside(zip, report) : ExpandInto(zip, scratch / "a", report);

      EXPECT_EQ(result.faults, row.faults);
      EXPECT_EQ(report.Summary().reason, row.reason);
      EXPECT_NE(result.Line().find(row.why), std::string::npos) << result.Line();
      std::filesystem::remove(zip);
      Contents expected{{"sentinel", "outside"}};
      if (result.placedAs == "good.txt") {
        EXPECT_EQ(row.left, Contents());
        expected["good.txt"] = "good";
      } else {
        expected.insert({{"a", "/"}, {"a/good.txt", "good"}});
        expected.insert(row.left.begin(), row.left.end());
      }
      EXPECT_EQ(Tree(scratch.Path()), expected);
      EXPECT_FALSE(std::filesystem::exists("/tmp/expander-sentinel"));
    }
  }
}

TEST(HostileArchive, NameThatLeadsOutOrStandsForNothingIsRefused) {
  const char* const outside = "the name leads out of the folder";
  const char* const absolute = "the name is absolute";
  const auto refused = [](const std::string& name, const char* why) {
    return Hostile{
        .entries = {{.name = name, .data = "bad"}}, .why = why, .reason = Reason::NameRefused};
  };
  ExpectContained({
      refused("../sentinel", outside),
      refused("a/../../sentinel", outside),
      refused("a/..", outside),
      refused("../", outside),
      refused(R"(..\sentinel)", outside),
      refused(R"(a\..\..\sentinel)", outside),
      refused("/tmp/expander-sentinel", absolute),
      refused(R"(\sentinel)", absolute),
      refused(R"(C:\sentinel)", absolute),
      refused(std::string("a\0b", 3), "NUL"),
      refused("", "empty"),
      refused(std::string(5000, 'n'), "n...: the name is longer than a path"),
      refused("../a\nb\x7F", R"(../a\x0ab\x7f: )"),
      refused("../\xC2\x9F\xC2\xA0\xD8\x9C", "../\\xc2\\x9f\xC2\xA0\\xd8\\x9c: "),
      refused("../\xE2\x80\xA7\xE2\x80\xA8\xE2\x80\xAE\xE2\x80\xAF",
              "../\xE2\x80\xA7\\xe2\\x80\\xa8\\xe2\\x80\\xae\xE2\x80\xAF: "),
      refused("../\xE2\x80\x8E\xE2\x81\xA5\xE2\x81\xA6\x9B",
              "../\\xe2\\x80\\x8e\xE2\x81\xA5\\xe2\\x81\\xa6\\x9b: "),
      {.entries = {{.name = "other", .extra = UnicodeNameField("other", "../sentinel")}},
       .why = outside,
       .reason = Reason::NameRefused},
  });
}

TEST(HostileArchive, EntryThatIsNoneOrContradictsItselfIsRefused) {
  const char* const disagrees = "its own header says otherwise";
  const char* const stated = "states a size";
  ExpectContained({
      {{{.name = "character device", .mode = 0020666}}, "device"},
      {{{.name = "block device", .mode = 0060666}}, "device"},
      {{{.name = "pipe", .mode = 0010666}}, "device"},
      {{{.name = "socket", .mode = 0140666}}, "device"},
      {{{.name = "link/", .data = "x", .mode = kLink}}, "is a link with the name"},
      {{{.name = "long", .data = std::string(4096, 't'), .mode = kLink}}, "longer than a path"},
      {{{.name = "to nothing", .mode = kLink}}, "empty"},
      {{{.name = "to NUL", .data = std::string("a\0b", 3), .mode = kLink}}, "NUL"},
      {.entries = {{.name = "encrypted", .data = "x", .flags = 1}},
       .why = "encrypted",
       .reason = Reason::Unsupported},
      {.entries = {{.name = "masked", .data = "x", .flags = 1U << 13U}},
       .why = "encrypted",
       .reason = Reason::Unsupported},
      {.entries = {{.name = "unknown", .data = "x", .method = 9}},
       .why = "method",
       .reason = Reason::Unsupported},
      {{{.name = "shorter", .data = "x", .local = {kLocalNameSize, "\3"}}}, disagrees},
      {{{.name = "name", .data = "x", .local = {kLocalName, "f"}}}, disagrees},
      {{{.name = "method", .data = "x", .local = {kLocalMethod, "\x8"}}}, disagrees},
      {{{.name = "encrypted here", .data = "x", .local = {kLocalFlags, "\1"}}}, disagrees},
      {{{.name = "strongly", .data = "x", .local = {kLocalFlags, "\x40"}}}, disagrees},
      {{{.name = "masked", .data = "x", .local = {kLocalFlags + 1, "\x20"}}}, disagrees},
      {{{.name = "crc", .data = "x", .local = {kLocalCrc, "\1"}}}, disagrees},
      {{{.name = "no crc", .data = "x", .local = {kLocalCrc, std::string(4, '\0')}}}, disagrees},
      {{{.name = "size", .data = "x", .local = {kLocalSize, "\2"}}}, disagrees},
      {{{.name = "wide", .data = "x", .zip64 = true, .local = {kLocalName + 8, "\2"}}}, disagrees},
      {{{.name = "pack", .data = "x", .zip64 = true, .local = {kLocalName + 16, "\2"}}}, disagrees},
      {{{.name = "big", .data = "x", .deflate = true, .zip64 = true, .size = 1ULL << 40U}}, stated},
      {{{.name = "large", .data = "x", .zstd = true, .zip64 = true, .size = 1ULL << 40U}}, stated},
      {{{.name = "stored", .data = "x", .size = 2}}, stated},
      {{{.name = "behind the end", .data = "x", .offset = 1U << 20U}}, "outside"},
      {{{.name = "at the end", .data = "x", .offset = 70}}, "outside"},
      {{{.name = "too long", .data = "x", .size = 9999, .packedSize = 9999}}, "outside"},
  });
}

TEST(HostileArchive, EntriesThatAreInEachOthersWayAreRefused) {
  const ZipEntry link{.name = "l", .data = "..", .mode = kLink};
  const ZipEntry file{.name = "l", .data = "x"};
  const ZipEntry fileBelow{.name = "l/x", .data = "bad"};
  const ZipEntry linkBelow{.name = "l/x", .data = "to", .mode = kLink};
  const ZipEntry inside{.name = "in", .data = "x", .offset = 73};
  const ZipEntry next{.name = "no", .data = "x", .offset = 106};
  const ZipEntry around{.name = "a", .data = MakeZip({inside, next})};
  const ZipEntry above{.name = "../a"};
  const ZipEntry lineFeed{.name = "\n", .data = "bad"};
  const char* const inTheWay = "where a folder must be";
  ExpectContained({
      {{link, fileBelow}, inTheWay, 1, {{"a/l", "/"}, {"a/l/x", "bad"}}},
      {{link, linkBelow}, inTheWay, 1, {{"a/l", "/"}, {"a/l/x", "-> to"}}},
      {{file, fileBelow}, inTheWay, 1, {{"a/l", "/"}, {"a/l/x", "bad"}}},
      {{file, {.name = "same", .data = "x", .offset = 42}}, "shares bytes", 2},
      {{around, inside, next}, "shares bytes", 3},
      {{{.name = "shifted", .data = "xx", .local = {kLocalExtraSize, "\1"}}, file},
       "shares bytes",
       1,
       {{"a/l", "x"}}},
      {{file}, "breaks off", 1, {}, {.tableCut = 3}, Reason::NoArchive},
      {{file}, "breaks off", 1, {{"a/l", "x"}}, {.count = 1}, Reason::NoArchive},
      {{above, above, lineFeed}, "(and 1 more)", 2, {{"a/\n", "bad"}}, {}, Reason::NameRefused},
  });
}

// For each way of unpacking: at once, in blocks, by two threads.
TEST(HostileArchive, DataThatAreWrongLeaveNoFile) {
  const char* const otherSize = "its data are";
  const std::uint32_t wrong = 1;
  for (const std::size_t size : {10UL, 300'000UL, 5'000'000UL}) {
    const std::string data = Noise(size);
    const std::string none(size, '\xFF');
    const std::string endless = Bytes({{1, 1}, {0xFFFF, 4}}) + data;
    const std::string far(300'000, 'x');
    const std::string frame = ZstdFrame(data);
    const std::string half = frame.substr(0, frame.size() / 2);
    const std::string two = frame + ZstdFrame("");
    const std::string old = '\x27' + frame.substr(1);
    const std::string skipped = Bytes({{0x184D2A50, 4}, {size, 4}}) + data;
    ExpectContained({
        {{{.name = "stored", .data = data, .crc = wrong}}, "CRC"},
        {{{.name = "deflated", .data = data, .deflate = true, .crc = wrong}}, "CRC"},
        {{{.name = "none", .data = data, .deflate = true, .packed = none}}, "damaged"},
        {{{.name = "followed", .data = data, .deflate = true, .packed = Deflate(data) + "x"}},
         otherSize},
        {{{.name = "far", .data = data, .deflate = true, .packed = Deflate(data) + far}},
         otherSize},
        {{{.name = "longer", .data = data, .deflate = true, .size = size - 1}}, otherSize},
        {{{.name = "shorter", .data = data, .deflate = true, .size = size + 1}}, otherSize},
        {{{.name = "broken off", .data = data, .deflate = true, .packed = endless}}, otherSize},
        {{{.name = "zstd", .data = data, .zstd = true, .crc = wrong}}, "CRC"},
        {{{.name = "no frame", .data = data, .zstd = true, .packed = none}}, "damaged"},
        {{{.name = "old frame", .data = data, .zstd = true, .packed = old}}, "damaged"},
        {{{.name = "skipped", .data = data, .zstd = true, .packed = skipped}}, "damaged"},
        {{{.name = "half", .data = data, .zstd = true, .packed = half}}, "damaged"},
        {{{.name = "two", .data = data, .zstd = true, .packed = two}}, otherSize},
        {{{.name = "longer", .data = data, .zstd = true, .size = size - 1}}, otherSize},
        {{{.name = "shorter", .data = data, .zstd = true, .size = size + 1}}, otherSize},
    });
  }
}

TEST(HostileArchive, ArchiveThatIsIncompleteIsRefused) {
  const ScratchFolder scratch;
  const std::string zip = scratch / "a.zip";
  // The disc of each kind of end record, and the number of entries on this disc.
  for (const auto& [layout, record, place] :
       {std::tuple(ZipLayout(), "PK\5\6", 4), std::tuple(ZipLayout(), "PK\5\6", 8),
        std::tuple(ZipLayout{.zip64End = true}, "PK\6\6", 16),
        std::tuple(ZipLayout{.zip64End = true}, "PK\6\6", 24)}) {
    std::string bytes = MakeZip({kGood}, layout);
    bytes[bytes.find(record) + static_cast<std::size_t>(place)] = '\2';
    WriteFile(zip, bytes);
    EXPECT_NE(ExpandInto(zip, scratch / "t").Line().find("archive of several"), std::string::npos);
  }
  // A table that only serves to use up the memory.
  const std::uint64_t table = 129ULL << 20U;
  WriteFile(zip, "PK\1\2");
  std::filesystem::resize_file(zip, table);
  std::ofstream(zip, std::ios::app)
      << "PK\5\6" + Bytes({{0, 4}, {1, 2}, {1, 2}, {table, 4}, {0, 4}, {0, 2}});
  EXPECT_NE(ExpandInto(zip, scratch / "t").Line().find("too large to be real"), std::string::npos);
  EXPECT_EQ(Tree(scratch / "t"), Contents());
  // The file is cut short after its table was read.
  for (const bool deflate : {false, true}) {
    for (const std::size_t size : {10UL, 300'000UL, 1'500'000UL, 5'000'000UL}) {
      SCOPED_TRACE(size);
      SystemCalls calls;
      calls.before["d"] = [&] { std::filesystem::resize_file(scratch / "a.zip", 80 + size / 3); };
      const expander::Result result =
          ExpandZip(scratch, {kGood,
                              {.name = "d/", .mode = kFolder},
                              {.name = "cut", .data = Noise(size), .deflate = deflate}});
      EXPECT_EQ(result.Line(), "cut: Input/output error");
      EXPECT_EQ(Tree(scratch / "t"), (Contents{{"good.txt", "good"}, {"d", "/"}}));
      std::filesystem::remove_all(scratch / "t");
    }
  }
}

TEST(HostileArchive, ZstdFrameWithALargeWindowIsRefused) {
  std::string data;
  data.resize(9'000'000, 'x');
  const ZipEntry fits{.name = "8 MB", .data = data, .zstd = true, .packed = ZstdFrame(data, 23)};
  const ZipEntry large{.name = "16 MB", .data = data, .zstd = true, .packed = ZstdFrame(data, 24)};
  ExpectContained({{{fits, large}, "damaged", 1, {{"a/8 MB", data}}}});
}

// An archive that is cut short anywhere is refused. A byte changed anywhere in its data or headers
// gives a fault or the same tree.
TEST(HostileArchive, BrokenOneNeverGivesAnotherTreeWithStatusZero) {
  const std::string whole =
      MakeZip({{.name = "d/b", .data = std::string(300, 'b'), .deflate = true},
               {.name = "z", .data = "zstd zstd zstd zstd zstd zstd", .zstd = true},
               {.name = "l", .data = "d/b", .mode = kLink}});
  const Contents expected{{"d", "/"},
                          {"d/b", std::string(300, 'b')},
                          {"l", "-> d/b"},
                          {"z", "zstd zstd zstd zstd zstd zstd"}};
  const ScratchFolder scratch;
  const std::string zip = scratch / "a.zip";
  for (std::size_t size = 0; size < whole.size(); ++size) {
    WriteFile(zip, whole.substr(0, size));
    EXPECT_EQ(ExpandInto(zip, scratch / "none").faults, 1) << size;
  }
  EXPECT_EQ(Tree(scratch / "none"), Contents());
  for (std::size_t i = 0; i < whole.find("PK\1\2"); ++i) {
    std::string damaged = whole;
    damaged[i] = static_cast<char>(damaged[i] ^ 0x55);
    WriteFile(zip, damaged);
    const std::string target = scratch / std::to_string(i);
    if (ExpandInto(zip, target).Complete()) {
      EXPECT_EQ(Tree(target), expected) << "byte " << i;
    }
  }
}

}  // namespace
}  // namespace zephin::test
