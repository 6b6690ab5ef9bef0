// Archives that mean harm or are broken. Each holds a good file too; after each expansion the test
// looks at all three: what the status says, what is left in the folder, and that nothing around the
// folder has changed.
#include <gtest/gtest.h>

#include <functional>

#include "platform/expander/expander.h"
#include "tests/platform/expander/scratch.h"
#include "tests/platform/expander/zip_writer.h"

namespace zephin::expander::test {
namespace {

const ZipEntry kGood{.name = "good.txt", .data = "good"};

struct HostileCase {
  std::string name;
  // Archive without the good file, which is put in front.
  std::vector<ZipEntry> entries;
  // What the line on standard error must hold.
  const char* why;
  std::uint64_t faults = 1;
  // What is left beside the good file.
  Listing left = {};
  ZipLayout layout = {};
};

ZipEntry Named(const std::string& name) {
  return {.name = name, .data = "bad"};
}

ZipEntry OfMode(std::uint32_t mode, const std::string& data = "bad") {
  return {.name = "bad", .data = data, .mode = mode};
}

constexpr std::uint32_t kLink = 0120777;
constexpr std::uint32_t kFolder = 0040755;

std::vector<HostileCase> HostileCases() {
  const char* const outside = "the name leads out of the folder";
  const char* const absolute = "the name is absolute";
  const char* const disagrees = "its own header says otherwise";
  const char* const shares = "shares bytes";
  const char* const damaged = "its data are damaged";
  const char* const stated = "states a size";
  std::vector<HostileCase> rows = {
      {"ParentName", {Named("../sentinel")}, outside},
      {"ParentInTheMiddle", {Named("a/../../sentinel")}, outside},
      {"ParentAtTheEnd", {Named("a/..")}, outside},
      {"ParentFolder", {{.name = "../", .mode = kFolder}}, outside},
      {"BackslashParent", {Named(R"(..\sentinel)")}, outside},
      {"BackslashParentInside", {Named(R"(a\..\..\sentinel)")}, outside},
      {"AbsoluteName", {Named("/tmp/expander-sentinel")}, absolute},
      {"AbsoluteBackslash", {Named(R"(\sentinel)")}, absolute},
      {"AbsoluteDrive", {Named(R"(C:\sentinel)")}, absolute},
      {"NulInName", {Named(std::string("a\0b", 3))}, "NUL"},
      {"EmptyName", {Named("")}, "empty"},
      {"EndlessName", {Named(std::string(5000, 'n'))}, "longer than a path"},
      {"NameChangedByExtraField",
       {{.name = "plain", .data = "bad", .extra = UnicodeNameField("plain", "../sentinel")}},
       outside},
      {"FileThroughLink",
       {{.name = "l", .data = "..", .mode = kLink}, Named("l/sentinel")},
       "where a folder must be",
       1,
       {{"l", "folder"}, {"l/sentinel", "file bad"}}},
      {"LinkThroughLink",
       {{.name = "l", .data = "..", .mode = kLink}, {.name = "l/m", .data = "x", .mode = kLink}},
       "where a folder must be",
       1,
       {{"l", "folder"}, {"l/m", "link x"}}},
      {"FileWhereFolderMustBe",
       {Named("a"), Named("a/b")},
       "where a folder must be",
       1,
       {{"a", "folder"}, {"a/b", "file bad"}}},
      {"CharacterDevice", {OfMode(0020666)}, "device"},
      {"BlockDevice", {OfMode(0060666)}, "device"},
      {"Pipe", {OfMode(0010666)}, "device"},
      {"Socket", {OfMode(0140666)}, "device"},
      {"FolderWithData", {{.name = "bad/", .data = "x", .mode = kFolder}}, "holds data"},
      {"LinkTargetTooLong", {OfMode(kLink, std::string(4096, 't'))}, "longer than a path"},
      {"LinkTargetEmpty", {OfMode(kLink, "")}, "empty"},
      {"LinkTargetWithNul", {OfMode(kLink, std::string("a\0b", 3))}, "NUL"},
      {"Encrypted", {{.name = "bad", .data = "x", .flags = 1}}, "encrypted"},
      {"UnknownMethod", {{.name = "bad", .data = "x", .method = 9}}, "method"},
      {"LocalName", {{.name = "bad", .data = "x", .localName = "../"}}, disagrees},
      {"LocalNameOfSameLength", {{.name = "bad", .data = "x", .localName = "bed"}}, disagrees},
      {"LocalMethod", {{.name = "bad", .data = "x", .localMethod = 8}}, disagrees},
      {"LocalCrc", {{.name = "bad", .data = "x", .localCrc = 1}}, disagrees},
      {"LocalSize", {{.name = "bad", .data = "x", .localSize = 2}}, disagrees},
      {"SizeBeyondReason",
       {{.name = "bad", .data = "x", .deflate = true, .zip64 = true, .size = 1ULL << 40U}},
       stated},
      {"StoredSizesDiffer", {{.name = "bad", .data = "x", .size = 2}}, stated},
      {"OutsideOfTheArchive", {{.name = "bad", .data = "x", .offset = 1U << 20U}}, "outside"},
      {"LongerThanTheArchive",
       {{.name = "bad", .data = "x", .size = 9999, .packedSize = 9999}},
       "outside"},
      {"SameBytesTwice",
       {{.name = "one", .data = "x"}, {.name = "two", .data = "x", .offset = 42}},
       shares,
       2},
      {"EntryInsideAnother",
       {{.name = "one", .data = MakeZip({{.name = "two", .data = "x"}})},
        {.name = "two", .data = "x", .offset = 75}},
       shares,
       2},
      {"TableCutShort", {Named("last")}, "breaks off", 1, {}, {.tableCut = 3}},
      {"TooFewTold", {Named("more")}, "breaks off", 1, {{"more", "file bad"}}, {.count = 1}},
      {"SeveralFaultsOneLine",
       {Named("../a"), Named("/b"), Named("\n")},
       "(and 1 more)",
       2,
       {{"\n", "file bad"}}},
      {"NoLineFeedInTheLine", {Named("../a\nb")}, R"(../a\x0ab: )"},
  };
  // Data that are wrong, for each of the ways that data take: at once, in blocks, by two threads.
  for (const std::size_t size : {10UL, 300'000UL, 5'000'000UL}) {
    const std::string data = Noise(size);
    const std::string way = "Of" + std::to_string(size);
    const std::uint32_t wrong = 1;
    rows.push_back({"WrongCrcStored" + way, {{.name = "bad", .data = data, .crc = wrong}}, "CRC"});
    rows.push_back({"WrongCrcDeflated" + way,
                    {{.name = "bad", .data = data, .deflate = true, .crc = wrong}},
                    "CRC"});
    rows.push_back(
        {"NoDeflateStream" + way,
         {{.name = "bad", .data = data, .deflate = true, .packed = std::string(size, '\xFF')}},
         damaged});
    rows.push_back({"DataAreLonger" + way,
                    {{.name = "bad", .data = data, .deflate = true, .size = size - 1}},
                    "its data are"});
    rows.push_back({"DataAreShorter" + way,
                    {{.name = "bad", .data = data, .deflate = true, .size = size + 1}},
                    "its data are"});
    rows.push_back({"StreamBreaksOff" + way,
                    {{.name = "bad",
                      .data = data,
                      .deflate = true,
                      .packed = std::string("\1\xFF\xFF\0\0", 5) + data}},
                    "its data are"});
  }
  return rows;
}

TEST(HostileArchive, IsContainedAndToldOf) {
  for (const auto& row : HostileCases()) {
    SCOPED_TRACE(row.name);
    const Scratch scratch;
    (void)scratch.Write("sentinel", "outside");
    std::vector<ZipEntry> entries = row.entries;
    entries.insert(entries.begin(), kGood);
    const std::string zip = scratch.Write("a.zip", MakeZip(entries, row.layout));

    const Result result = ExpandInto(zip, scratch.Path("target"));

    EXPECT_EQ(result.faults, row.faults);
    EXPECT_NE(result.Line().find(row.why), std::string::npos) << result.Line();
    Listing expected = row.left;
    expected["good.txt"] = "file good";
    EXPECT_EQ(List(scratch.Path("target")), expected);
    EXPECT_EQ(ReadFile(scratch.Path("sentinel")), "outside");
    EXPECT_FALSE(std::filesystem::exists("/tmp/expander-sentinel"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.Path("")), {}), 3);
  }
}

// Wherever a real archive breaks off, what is left is whole files only and the status tells.
TEST(TruncatedArchive, LeavesNothingThatPassesForTheWhole) {
  const std::string whole = MakeZip({kGood, {.name = "b", .data = Noise(100), .deflate = true}});
  const Scratch scratch;
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const std::string zip = scratch.Write("a.zip", whole.substr(0, size));
    EXPECT_EQ(ExpandInto(zip, scratch.Path("target")).faults, 1) << size;
  }
  EXPECT_TRUE(std::filesystem::is_empty(scratch.Path("target")));
}

// A byte changed anywhere in the data or headers gives an error or the very same tree.
TEST(DamagedArchive, NeverGivesAnotherTreeWithStatusZero) {
  const std::string whole =
      MakeZip({{.name = "d/b", .data = std::string(300, 'b'), .deflate = true},
               {.name = "l", .data = "d/b", .mode = kLink}});
  const Listing expected = {{"d", "folder"}, {"d/b", "file 300 bytes"}, {"l", "link d/b"}};
  const std::size_t table = whole.find("PK\1\2");
  const Scratch scratch;
  for (std::size_t i = 0; i < table; ++i) {
    std::string damaged = whole;
    damaged[i] = static_cast<char>(damaged[i] ^ 0x55);
    const std::string target = scratch.Path("target" + std::to_string(i));
    if (ExpandInto(scratch.Write("a.zip", damaged), target).Complete()) {
      EXPECT_EQ(List(target), expected) << "byte " << i;
    }
  }
}

}  // namespace
}  // namespace zephin::expander::test
