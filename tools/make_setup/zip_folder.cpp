#include "tools/make_setup/zip_folder.h"

#include <zip.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <fstream>
#include <memory>

#include "tools/make_setup/files.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kUnixFile = 0100000;
constexpr std::uint32_t kUnixFolder = 0040000;
constexpr std::uint32_t kUnixLink = 0120777;
constexpr zip_uint16_t kTimeField = 0x5455;
constexpr zip_int64_t kWholeFile = -1;

std::int64_t UnixTime(const fs::path& path) {
  const auto time = fs::file_time_type::clock::to_sys(fs::last_write_time(path));
  return std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
}

class Packer {
 public:
  explicit Packer(const fs::path& archive) : path_(archive) {
    int code = 0;
    zip_.reset(zip_open(archive.c_str(), ZIP_CREATE | ZIP_EXCL, &code));
    if (!zip_) {
      throw SetupError(archive.string() + ": can't be created");
    }
  }

  void AddFolder(const fs::path& path, const std::string& name, fs::perms mode) {
    const zip_int64_t index = zip_dir_add(zip_.get(), name.c_str(), ZIP_FL_ENC_UTF_8);
    Describe(index, path, kUnixFolder | static_cast<std::uint32_t>(mode), UnixTime(path));
  }

  void AddFile(const fs::path& path, const std::string& name, fs::perms mode) {
    // The library opens files later and doesn't say then which one failed.
    if (!std::ifstream(path)) {
      throw SetupError(path.string() + ": can't be read");
    }
    AddSource(path, name, zip_source_file(zip_.get(), path.c_str(), 0, kWholeFile),
              kUnixFile | static_cast<std::uint32_t>(mode), UnixTime(path));
  }

  /// The standard library can't read a link's own time. That of its folder is used instead.
  void AddLink(const fs::path& path, const std::string& name) {
    const std::string& target = targets_.emplace_back(fs::read_symlink(path).string());
    AddSource(path, name, zip_source_buffer(zip_.get(), target.data(), target.size(), 0), kUnixLink,
              UnixTime(path.parent_path()));
  }

  void Close() {
    if (zip_close(zip_.get()) != 0) {
      Fail(path_);
    }
    (void)zip_.release();
  }

 private:
  [[noreturn]] void Fail(const fs::path& item) {
    throw SetupError(item.string() + ": can't be packed: " + zip_strerror(zip_.get()));
  }

  void AddSource(const fs::path& path, const std::string& name, zip_source_t* source,
                 std::uint32_t mode, std::int64_t time) {
    const zip_int64_t index = zip_file_add(zip_.get(), name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
      zip_source_free(source);
    }
    Describe(index, path, mode, time);
  }

  void Describe(zip_int64_t index, const fs::path& path, std::uint32_t mode, std::int64_t time) {
    if (index < 0) {
      Fail(path);
    }
    const auto entry = static_cast<zip_uint64_t>(index);
    zip_file_set_external_attributes(zip_.get(), entry, 0, ZIP_OPSYS_UNIX, mode << 16);
    // The archive's own times are local ones in steps of two seconds. The extra field has seconds
    // since 1970.
    zip_file_set_mtime(zip_.get(), entry, time, 0);
    std::array<zip_uint8_t, 5> field{1};
    for (std::size_t i = 1; i < field.size(); ++i) {
      field[i] = static_cast<zip_uint8_t>(time >> (8 * (i - 1)));
    }
    zip_file_extra_field_set(zip_.get(), entry, kTimeField, ZIP_EXTRA_FIELD_NEW, field.data(),
                             static_cast<zip_uint16_t>(field.size()),
                             ZIP_FL_LOCAL | ZIP_FL_CENTRAL);
  }

  fs::path path_;
  /// The library reads them when the archive is closed.
  std::deque<std::string> targets_;
  std::unique_ptr<zip_t, decltype(&zip_discard)> zip_{nullptr, &zip_discard};
};

}  // namespace

void ZipFolder(const fs::path& folder, const std::string& topName, const fs::path& archive) {
  const std::vector<TreeItem> items = ListTree(folder);
  if (items.empty() && topName.empty()) {
    throw SetupError(folder.string() + ": must contain something to pack");
  }
  Packer packer(archive);
  const std::string prefix = topName.empty() ? "" : topName + "/";
  if (!topName.empty()) {
    packer.AddFolder(folder, topName, fs::status(folder).permissions() & fs::perms::all);
  }
  for (const TreeItem& item : items) {
    const fs::path path = folder / item.path;
    const std::string name = prefix + item.path;
    if (name.starts_with("__MACOSX")) {
      throw SetupError(path.string() + ": must have another name: the expansion drops it");
    }
    switch (item.kind) {
      case ItemKind::File:
        packer.AddFile(path, name, item.mode);
        break;
      case ItemKind::Folder:
        packer.AddFolder(path, name, item.mode);
        break;
      case ItemKind::Link:
        packer.AddLink(path, name);
        break;
    }
  }
  packer.Close();
}

}  // namespace zephin::make_setup
