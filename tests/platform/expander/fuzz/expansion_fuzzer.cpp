// Expands archives made from any bytes, as they are or built from them entry by entry, into a
// folder with things that stand in it, and looks at what is around the folder and what kind of
// things have come to stand in it. Finds what leads out of the folder, and crashes on the way.
#include <fuzzer/FuzzedDataProvider.h>
#include <sys/stat.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "platform/expander/expander.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/platform/expander/zip_writer.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

// sentinel        a file that must stay as it is
// outside/        a folder that must stay empty
// work/a.zip      the archive
// work/target/    where it is expanded to, with a file, a folder and links to the things outside
class Site {
 public:
  Site() {
    std::string pattern = "/dev/shm/expansion-fuzzer-XXXXXX";
    Require(::mkdtemp(pattern.data()) != nullptr);
    root_ = pattern;
    Write(root_ / "sentinel", kSentinel);
    fs::create_directory(root_ / "outside");
  }
  ~Site() { fs::remove_all(root_); }
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;

  fs::path Root() const { return root_; }
  fs::path Work() const { return root_ / "work"; }

  void Prepare(const std::string& archive) const {
    fs::remove_all(Work());
    fs::create_directories(Work() / "target/d");
    Write(Work() / "target/f", "old");
    fs::create_symlink("../../outside", Work() / "target/l");
    fs::create_symlink("../../sentinel", Work() / "target/s");
    Write(Work() / "a.zip", archive);
  }

  void Check() const {
    std::ifstream file(root_ / "sentinel");
    Require(std::string(std::istreambuf_iterator<char>(file), {}) == kSentinel);
    Require(fs::is_empty(root_ / "outside"));
    Require(std::distance(fs::directory_iterator(root_), {}) == 3);
    for (const auto& item : fs::recursive_directory_iterator(Work())) {
      const auto status = item.symlink_status();
      Require(fs::is_regular_file(status) || fs::is_directory(status) || fs::is_symlink(status));
      Require(fs::is_symlink(status) ||
              (status.permissions() & (fs::perms::set_uid | fs::perms::set_gid |
                                       fs::perms::sticky_bit)) == fs::perms::none);
    }
  }

 private:
  static constexpr const char* kSentinel = "sentinel";

  static void Write(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }

  fs::path root_;
};

std::string Name(FuzzedDataProvider& data, const Site& site) {
  const std::array<std::string, 16> parts = {
      "a", "b",  "d",        "f",  "l",    "s",  "..",   ".",
      "",  "\\", "__MACOSX", "C:", "\x81", "\n", "..\\", site.Root() / "outside"};
  std::string name;
  for (int i = data.ConsumeIntegralInRange(1, 4); i > 0; --i) {
    name += data.PickValueInArray(parts) + (data.ConsumeBool() ? "/" : "");
  }
  return name;
}

ZipEntry MakeEntry(FuzzedDataProvider& data, const Site& site) {
  constexpr std::array<std::uint32_t, 8> kModes = {0100644, 0040755, 0120777, 0106755,
                                                   0020666, 0010666, 0,       0041777};
  ZipEntry entry;
  entry.name = Name(data, site);
  entry.data = data.ConsumeBool() ? Name(data, site) : data.ConsumeRandomLengthString(64);
  entry.mode = data.PickValueInArray(kModes);
  entry.deflate = data.ConsumeBool();
  entry.descriptor = data.ConsumeBool();
  entry.zip64 = data.ConsumeBool();
  entry.host = data.ConsumeBool() ? 3 : 0;
  const std::vector<std::function<void()>> lies = {
      [&] { entry.extra = UnicodeNameField(entry.name, Name(data, site)); },
      [&] { entry.local = std::pair(kLocalName, Name(data, site)); },
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

std::string MakeArchive(FuzzedDataProvider& data, const Site& site) {
  if (data.ConsumeBool()) {
    return data.ConsumeRemainingBytesAsString();
  }
  std::vector<ZipEntry> entries;
  while (data.remaining_bytes() > 0 && entries.size() < 12) {
    entries.push_back(MakeEntry(data, site));
  }
  return MakeZip(entries);
}

}  // namespace
}  // namespace zephin::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const zephin::test::Site kSite;
  FuzzedDataProvider data(bytes, size);
  const bool beside = data.ConsumeBool();
  kSite.Prepare(zephin::test::MakeArchive(data, kSite));
  const std::string archive = kSite.Work() / "a.zip";
  (void)(beside ? zephin::expander::ExpandBeside(archive)
                : zephin::expander::ExpandInto(archive, kSite.Work() / "target"));
  kSite.Check();
  return 0;
}
