#include "tools/make_setup/tarball.h"

#include <archive.h>
#include <archive_entry.h>
#include <zlib.h>

#include <fstream>
#include <memory>
#include <system_error>
#include <utility>

#include "tools/make_setup/files.h"
#include "tools/make_setup/packed_pieces.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlockSize = 1 << 18;
constexpr unsigned kPlainMode = 0644;
constexpr unsigned kProgramMode = 0755;

/// Writes a tar file without compression.
class TarWriter {
 public:
  TarWriter(const fs::path& path, const TarballOptions& options) : path_(path), options_(options) {
    // Of all formats that have names of any length, the only one whose names are bytes: others
    // convert them by the publisher's locale.
    Check(archive_write_set_format_gnutar(tar_.get()));
    // No buffer: the library leaks it if its last write fails.
    Check(archive_write_set_bytes_per_block(tar_.get(), 0));
    Check(archive_write_open_filename(tar_.get(), path.c_str()));
  }

  void Add(const fs::path& source, const TreeItem& item) {
    // One entry for all items: nothing of the one before may show in the next.
    archive_entry_clear(entry_.get());
    archive_entry_copy_pathname(entry_.get(), item.path.c_str());
    archive_entry_set_mtime(entry_.get(), options_.time, 0);
    // Numbers alone would be looked up where the tarball is unpacked.
    archive_entry_set_uname(entry_.get(), "root");
    archive_entry_set_gname(entry_.get(), "root");
    const bool isProgram =
        item.kind != ItemKind::File || (item.mode & fs::perms::owner_exec) != fs::perms::none;
    archive_entry_set_perm(entry_.get(), isProgram ? kProgramMode : kPlainMode);
    archive_entry_set_filetype(entry_.get(), item.kind == ItemKind::Folder ? AE_IFDIR
                                             : item.kind == ItemKind::Link ? AE_IFLNK
                                                                           : AE_IFREG);
    if (item.kind == ItemKind::Link) {
      archive_entry_copy_symlink(entry_.get(), fs::read_symlink(source).c_str());
    }
    archive_entry_set_size(entry_.get(), static_cast<la_int64_t>(item.size));
    Check(archive_write_header(tar_.get(), entry_.get()));
    if (item.kind == ItemKind::File) {
      AddContent(source);
    }
  }

  void Close() { Check(archive_write_close(tar_.get())); }

 private:
  void AddContent(const fs::path& source) {
    std::ifstream stream(source, std::ios::binary);
    std::vector<char> block(kBlockSize);
    do {
      stream.read(block.data(), static_cast<std::streamsize>(block.size()));
      const auto size = static_cast<std::size_t>(stream.gcount());
      if (stream.bad() || (size > 0 && archive_write_data(tar_.get(), block.data(), size) < 0)) {
        Check(ARCHIVE_FATAL);
      }
      if (options_.report) {
        options_.report();
      }
    } while (stream);
  }

  void Check(int status) const {
    if (status != ARCHIVE_OK) {
      throw SetupError(path_.string() + ": can't be written: " +
                       std::generic_category().message(archive_errno(tar_.get())));
    }
  }

  fs::path path_;
  const TarballOptions& options_;
  std::unique_ptr<archive, decltype(&archive_write_free)> tar_{archive_write_new(),
                                                               &archive_write_free};
  std::unique_ptr<archive_entry, decltype(&archive_entry_free)> entry_{archive_entry_new(),
                                                                       &archive_entry_free};
};

void WriteTar(const fs::path& tar, const std::vector<TarballItem>& items,
              const TarballOptions& options) {
  TarWriter writer(tar, options);
  for (const TarballItem& item : items) {
    const fs::file_status status = fs::symlink_status(item.source);
    if (!fs::is_directory(status)) {
      writer.Add(item.source,
                 {item.name, ItemKind::File, status.permissions(), fs::file_size(item.source)});
      continue;
    }
    writer.Add(item.source, {item.name, ItemKind::Folder});
    for (TreeItem below : ListTree(item.source)) {
      const fs::path source = item.source / below.path;
      below.path.insert(0, item.name + "/");
      writer.Add(source, below);
    }
  }
  writer.Close();
}

std::string Number32(std::uint64_t number) {
  std::string bytes;
  for (int i = 0; i < 4; ++i) {
    bytes += static_cast<char>(number >> (8 * i));
  }
  return bytes;
}

/// The threads of PackedPieces do in a moment what the tar library's own compression takes a minute
/// for: a payload is compressed already.
void Gzip(const fs::path& file, const fs::path& gzip, const TarballOptions& options) {
  const std::uint64_t size = fs::file_size(file);
  std::vector<Piece> pieces = PiecesOf(file.string(), size);
  // Only a whole file may be stored instead of deflated, and this format has no stored files.
  pieces.front().first = false;
  std::vector<std::uint64_t> lengths;
  lengths.reserve(pieces.size());
  for (const Piece& piece : pieces) {
    lengths.push_back(piece.length);
  }
  FileWriter writer(gzip);
  // Deflate; no name, no time, no flags; made on Unix.
  writer.Write(std::string("\x1F\x8B\x08\0\0\0\0\0\0\x03", 10));
  uLong crc = 0;
  PackedPieces packed(std::move(pieces), options.threads);
  for (const std::uint64_t length : lengths) {
    const PackedPiece piece = packed.Next();
    crc = crc32_combine(crc, piece.crc, static_cast<z_off_t>(length));
    writer.Write(piece.bytes);
    if (options.report) {
      options.report();
    }
  }
  writer.Write(Number32(crc) + Number32(size));
  writer.Close();
}

}  // namespace

void WriteTarball(const fs::path& tarball, const std::vector<TarballItem>& items,
                  const TarballOptions& options) {
  const fs::path tar = tarball.string() + ".tmp";
  WriteTar(tar, items, options);
  Gzip(tar, tarball, options);
  fs::remove(tar);
}

}  // namespace zephin::make_setup
