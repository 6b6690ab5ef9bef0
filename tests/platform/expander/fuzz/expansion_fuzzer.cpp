// Expands archives into a folder and beside the archive. Archives of any bytes, and archives whose
// entries lie, must leave everything around the folder as it is, and make nothing but files,
// folders and links. Of archives that are built from known entries, the tree and the faults must be
// exactly those that the entries ask for.
#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/expander/expander.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/platform/expander/zip_writer.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

// sentinel        a file that must not change
// outside/        a folder that must stay empty
// work/a.zip      the archive
// work/target/    the target, with a file, a folder and links to the items outside
void Prepare(const ScratchFolder& root, const std::string& archive) {
  fs::remove_all(root / "work");
  WriteFile(root / "sentinel", "sentinel");
  fs::create_directory(root / "outside");
  WriteFile(root / "work/a.zip", archive);
  WriteFile(root / "work/target/f", "old");
  fs::create_directory(root / "work/target/d");
  fs::create_symlink("../../outside", root / "work/target/l");
  fs::create_symlink("../../sentinel", root / "work/target/s");
}

expander::Result Expand(const ScratchFolder& root, bool beside) {
  const std::string archive = root / "work/a.zip";
  return beside ? expander::ExpandBeside(archive)
                : expander::ExpandInto(archive, root / "work/target");
}

void CheckSurroundings(const ScratchFolder& root) {
  constexpr auto kNever = fs::perms::set_uid | fs::perms::set_gid | fs::perms::sticky_bit;
  Require(ReadFile(root / "sentinel") == "sentinel");
  Require(fs::is_empty(root / "outside"));
  Require(std::distance(fs::directory_iterator(root.Path()), {}) == 3);
  for (const auto& item : fs::recursive_directory_iterator(root / "work")) {
    const auto status = item.symlink_status();
    Require(fs::is_regular_file(status) || fs::is_directory(status) || fs::is_symlink(status));
    Require(fs::is_symlink(status) || (status.permissions() & kNever) == fs::perms::none);
  }
}

std::string Name(FuzzedDataProvider& data, const ScratchFolder& root) {
  const std::array<std::string, 16> parts = {
      "a", "b",  "d",        "f",  "l",    "s",  "..",   ".",
      "",  "\\", "__MACOSX", "C:", "\x81", "\n", "..\\", root / "outside"};
  std::string name;
  for (int i = data.ConsumeIntegralInRange(1, 4); i > 0; --i) {
    name += data.PickValueInArray(parts) + (data.ConsumeBool() ? "/" : "");
  }
  return name;
}

ZipEntry LyingEntry(FuzzedDataProvider& data, const ScratchFolder& root) {
  constexpr std::array<std::uint32_t, 8> kModes = {0100644, 0040755, 0120777, 0106755,
                                                   0020666, 0010666, 0,       0041777};
  ZipEntry entry;
  entry.name = Name(data, root);
  entry.data = data.ConsumeBool() ? Name(data, root) : data.ConsumeRandomLengthString(64);
  entry.mode = data.PickValueInArray(kModes);
  entry.deflate = data.ConsumeBool();
  entry.zstd = !entry.deflate && data.ConsumeBool();
  entry.descriptor = data.ConsumeBool();
  entry.zip64 = data.ConsumeBool();
  entry.host = data.ConsumeBool() ? 3 : 0;
  const std::vector<std::function<void()>> lies = {
      [&] { entry.extra = UnicodeNameField(entry.name, Name(data, root)); },
      [&] { entry.local = std::pair(kLocalName, Name(data, root)); },
      [&] { entry.size = data.ConsumeIntegral<std::uint32_t>(); },
      [&] { entry.packedSize = data.ConsumeIntegralInRange<std::uint64_t>(0, 200); },
      [&] { entry.offset = data.ConsumeIntegralInRange<std::uint64_t>(0, 500); },
      [&] { entry.crc = 0; },
      [&] { entry.flags = data.ConsumeIntegral<std::uint16_t>(); },
      [&] { entry.extra = data.ConsumeRandomLengthString(40); },
  };
  // More numbers than lies: some entries are honest.
  if (const auto lie = data.ConsumeIntegralInRange<std::size_t>(0, 12); lie < lies.size()) {
    lies[lie]();
  }
  return entry;
}

// Entries, and what must become of them.
struct KnownArchive {
  std::vector<ZipEntry> entries;
  // What must be on disk, relative to the folder that the archive is expanded into.
  Contents tree;
  std::set<std::string> tops;
  std::uint64_t faults = 0;
};

// Adds an entry unless an earlier one has its path, or is in its way.
void AddKnownEntry(FuzzedDataProvider& data, KnownArchive& archive, Contents& asked) {
  std::string path;
  Contents folders;
  for (int i = data.ConsumeIntegralInRange(0, 2); i > 0; --i) {
    path += data.PickValueInArray({"a", "b", "d"});
    folders[path] = "/";
    path += "/";
  }
  path += data.PickValueInArray({"a", "b", "c", "f", "\xC3\xBC", "x\\y"});
  ZipEntry entry;
  entry.data = data.ConsumeRandomLengthString(64);
  entry.deflate = data.ConsumeBool();
  entry.descriptor = data.ConsumeBool();
  entry.zip64 = data.ConsumeBool();
  std::string content = entry.data;
  const int kind = data.ConsumeIntegralInRange(0, 3);
  if (kind == 0) {
    entry.mode = kFolder;
    content = "/";
  } else if (kind == 1 && !entry.data.empty() && entry.data.find('\0') == std::string::npos) {
    entry.mode = kLink;
    content = "-> " + entry.data;
  }
  bool inTheWay = asked.contains(path);
  for (const auto& [folder, slash] : folders) {
    const auto known = asked.find(folder);
    inTheWay = inTheWay || (known != asked.end() && known->second != slash);
  }
  if (inTheWay) {
    return;
  }
  asked.insert(folders.begin(), folders.end());
  asked[path] = content;
  archive.tree.insert(folders.begin(), folders.end());
  archive.tops.insert(path.substr(0, path.find('/')));
  // A wrong CRC is noticed for data only.
  if (content != "/" && data.ConsumeIntegralInRange(0, 7) == 0) {
    entry.crc = Crc(entry.data) ^ 1U;
    ++archive.faults;
  } else {
    archive.tree[path] = content;
  }
  entry.name = path + (content == "/" && data.ConsumeBool() ? "/" : "");
  archive.entries.push_back(entry);
}

void CheckKnown(FuzzedDataProvider& data, const ScratchFolder& root, bool beside) {
  KnownArchive archive;
  Contents asked;
  // One name with a slash, so that no backslash is taken for one.
  archive.entries.push_back({.name = "__MACOSX/"});
  while (data.remaining_bytes() > 0 && archive.entries.size() < 12) {
    AddKnownEntry(data, archive, asked);
  }
  Prepare(root, MakeZip(archive.entries));
  Contents expected = Tree(root / "work");
  std::string place = beside ? "" : "target/";
  if (beside && archive.tops.size() > 1) {
    expected["a"] = "/";
    place = "a/";
  }
  for (const auto& [path, content] : archive.tree) {
    expected[place + path] = content;
  }
  const expander::Result result = Expand(root, beside);
  Require(result.faults == archive.faults);
  Require(Tree(root / "work") == expected);
}

std::string LyingArchive(FuzzedDataProvider& data, const ScratchFolder& root) {
  std::vector<ZipEntry> entries;
  while (data.remaining_bytes() > 0 && entries.size() < 12) {
    entries.push_back(LyingEntry(data, root));
  }
  return MakeZip(entries);
}

}  // namespace
}  // namespace zephin::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const zephin::test::ScratchFolder kRoot;
  FuzzedDataProvider data(bytes, size);
  const bool beside = data.ConsumeBool();
  const bool built = !data.ConsumeBool();
  if (built && data.ConsumeBool()) {
    zephin::test::CheckKnown(data, kRoot, beside);
  } else {
    zephin::test::Prepare(kRoot, built ? zephin::test::LyingArchive(data, kRoot)
                                       : data.ConsumeRemainingBytesAsString());
    (void)zephin::test::Expand(kRoot, beside);
  }
  zephin::test::CheckSurroundings(kRoot);
  return 0;
}
