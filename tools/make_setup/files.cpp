#include "tools/make_setup/files.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <random>
#include <sstream>
#include <system_error>
#include <utility>

#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

void List(const fs::path& root, const std::string& below, std::vector<TreeItem>& items) {
  std::vector<fs::directory_entry> entries;
  std::copy(fs::directory_iterator(root / below), {}, std::back_inserter(entries));
  // The order of a directory differs between disks, and the archive has to be the same.
  std::sort(entries.begin(), entries.end());
  for (const fs::directory_entry& entry : entries) {
    const fs::file_status status = entry.symlink_status();
    const std::string name = entry.path().filename().string();
    TreeItem item{(fs::path(below) / name).string(), ItemKind::File,
                  status.permissions() & fs::perms::all, 0};
    // By the item's own status: a link to a folder is a link, or the walk could go in circles.
    if (fs::is_directory(status)) {
      item.kind = ItemKind::Folder;
    } else if (fs::is_symlink(status)) {
      item.kind = ItemKind::Link;
    } else if (fs::is_regular_file(status)) {
      item.size = entry.file_size();
    } else {
      throw SetupError(entry.path().string() + ": must be a file, a folder or a link");
    }
    items.push_back(item);
    if (item.kind == ItemKind::Folder) {
      List(root, item.path, items);
    }
  }
}

}  // namespace

std::string ReadFile(const fs::path& path) {
  std::error_code error;
  // A folder opens as a stream without an error, and reads as empty.
  if (!fs::is_regular_file(path, error)) {
    throw SetupError(path.string() + ": no such file");
  }
  std::ifstream stream(path, std::ios::binary);
  std::ostringstream bytes;
  // Inserting the buffer of an empty file counts as a failure of the receiving stream.
  if (stream.is_open() && stream.peek() != std::ifstream::traits_type::eof()) {
    bytes << stream.rdbuf();
  }
  if (!stream.is_open() || stream.bad() || bytes.bad()) {
    throw SetupError(path.string() + ": can't be read");
  }
  return std::move(bytes).str();
}

void WriteFile(const fs::path& path, const std::string& bytes) {
  FileWriter writer(path);
  writer.Write(bytes);
  writer.Close();
}

FileWriter::FileWriter(const fs::path& path)
    : path_(path), stream_(path, std::ios::binary | std::ios::trunc) {
  Check();
}

void FileWriter::Write(std::span<const char> block) {
  stream_.write(block.data(), static_cast<std::streamsize>(block.size()));
  Check();
}

void FileWriter::Overwrite(std::uint64_t position, std::span<const char> block) {
  stream_.seekp(static_cast<std::streamoff>(position));
  Write(block);
  // Back to where `Write` appends.
  stream_.seekp(0, std::ios::end);
  Check();
}

void FileWriter::Close() {
  // Flushes, and only then a full disk shows.
  stream_.close();
  Check();
}

void FileWriter::Check() const {
  if (!stream_) {
    throw SetupError(path_.string() +
                     ": can't be written: " + std::generic_category().message(errno));
  }
}

bool IsBelow(const std::string& path) {
  const fs::path normal = fs::path(path).lexically_normal();
  return !normal.empty() && normal.is_relative() && normal != "." && *normal.begin() != "..";
}

std::vector<TreeItem> ListTree(const fs::path& root) {
  if (!fs::is_directory(root)) {
    throw SetupError(root.string() + ": no such folder");
  }
  std::vector<TreeItem> items;
  List(root, "", items);
  return items;
}

void CopyTree(const fs::path& from, const fs::path& to) {
  std::vector<TreeItem> items = ListTree(from);
  // Modes come with the files; times do not.
  fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  // Contents first, since a new item changes the time of its folder.
  std::reverse(items.begin(), items.end());
  for (const TreeItem& item : items) {
    if (item.kind != ItemKind::Link) {
      fs::last_write_time(to / item.path, fs::last_write_time(from / item.path));
    }
  }
}

ScratchFolder::ScratchFolder(const fs::path& path) {
  const fs::path parent = fs::absolute(path).parent_path();
  if (!fs::is_directory(parent)) {
    throw SetupError(parent.string() + ": no such folder");
  }
  path_ = parent / (".make_setup-" + std::to_string(std::random_device{}()));
  // False for a name that exists: another run may work beside this one.
  if (!fs::create_directory(path_)) {
    throw SetupError(path_.string() + ": exists already");
  }
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace zephin::make_setup
