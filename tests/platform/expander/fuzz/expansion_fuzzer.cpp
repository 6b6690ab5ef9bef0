// Expands archives made from any bytes, as they are or built from them entry by entry, into a
// folder with things that stand in it, and looks at what is around the folder and what kind of
// things have come to stand in it. Finds what leads out of the folder, and crashes on the way.
#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <iterator>
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

// sentinel        a file that must stay as it is
// outside/        a folder that must stay empty
// work/a.zip      the archive
// work/target/    where it is expanded to, with a file, a folder and links to the things outside
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

void Check(const ScratchFolder& root) {
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

ZipEntry MakeEntry(FuzzedDataProvider& data, const ScratchFolder& root) {
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

std::string MakeArchive(FuzzedDataProvider& data, const ScratchFolder& root) {
  if (data.ConsumeBool()) {
    return data.ConsumeRemainingBytesAsString();
  }
  std::vector<ZipEntry> entries;
  while (data.remaining_bytes() > 0 && entries.size() < 12) {
    entries.push_back(MakeEntry(data, root));
  }
  return MakeZip(entries);
}

}  // namespace
}  // namespace zephin::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const zephin::test::ScratchFolder kRoot;
  FuzzedDataProvider data(bytes, size);
  const bool beside = data.ConsumeBool();
  zephin::test::Prepare(kRoot, zephin::test::MakeArchive(data, kRoot));
  const std::string archive = kRoot / "work/a.zip";
  (void)(beside ? zephin::expander::ExpandBeside(archive)
                : zephin::expander::ExpandInto(archive, kRoot / "work/target"));
  zephin::test::Check(kRoot);
  return 0;
}
