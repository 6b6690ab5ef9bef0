#include "tools/make_setup/zip_folder.h"

#include <zlib.h>

#include <chrono>
#include <system_error>
#include <vector>

#include "platform/framework/text.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/packed_pieces.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kUnixFile = 0100000;
constexpr std::uint32_t kUnixFolder = 0040000;
constexpr std::uint32_t kUnixLink = 0120777;

std::int64_t UnixTime(const fs::path& path) {
  const auto time = fs::file_time_type::clock::to_sys(fs::last_write_time(path));
  return std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
}

/// An item of the archive and the pieces of its content.
struct Planned {
  ZipEntry entry;
  std::string target = {};  ///< Of a link.
  std::size_t pieces = 0;
};

/// All items in their order.
class Plan {
 public:
  Plan(fs::path folder, const std::string& topName) : folder_(std::move(folder)) {
    const std::vector<TreeItem> items = ListTree(folder_);
    planned.reserve(items.size() + 1);
    pieces.reserve(items.size());
    // Many readers report an archive without an entry as damaged.
    if (items.empty() && topName.empty()) {
      throw SetupError(folder_.string() + ": must contain something to pack");
    }
    if (!topName.empty()) {
      prefix_ = topName + "/";
      // With the rights of the folder itself, which the installed folder gets.
      const fs::perms mode = fs::status(folder_).permissions() & fs::perms::all;
      Add({"", ItemKind::Folder, mode, 0});
    }
    for (const TreeItem& item : items) {
      Add(item);
    }
  }

  std::vector<Planned> planned;
  std::vector<Piece> pieces;

 private:
  void Add(const TreeItem& item) {
    const fs::path path = folder_ / item.path;
    const auto mode = static_cast<std::uint32_t>(item.mode);
    Planned added{.entry = {.name = NameOf(item), .size = item.size}};
    switch (item.kind) {
      case ItemKind::File: {
        added.entry.mode = kUnixFile | mode;
        added.entry.time = UnixTime(path);
        const std::vector<Piece> own = PiecesOf(path.string(), item.size);
        added.pieces = own.size();
        pieces.insert(pieces.end(), own.begin(), own.end());
        break;
      }
      case ItemKind::Folder:
        added.entry.mode = kUnixFolder | mode;
        added.entry.time = UnixTime(path);
        break;
      case ItemKind::Link:
        // The standard library can't read a link's own time. That of its folder is used instead.
        added.entry.mode = kUnixLink;
        added.entry.time = UnixTime(path.parent_path());
        added.target = fs::read_symlink(path).string();
        added.entry.size = added.target.size();
        break;
    }
    planned.push_back(std::move(added));
  }

  std::string NameOf(const TreeItem& item) const {
    std::string name = prefix_ + item.path;
    if (name.starts_with("__MACOSX")) {
      throw SetupError((folder_ / item.path).string() +
                       ": must have another name: the expansion drops it");
    }
    if (ConvertEncoding(Utf8(name), Encoding::UTF16).DeclaredEncoding() != Encoding::UTF16) {
      throw SetupError((folder_ / item.path).string() + ": must have a name in UTF-8");
    }
    // The slash is what makes it a folder to readers that don't look at modes.
    return item.kind == ItemKind::Folder && !name.ends_with('/') ? name + "/" : name;
  }

  fs::path folder_;
  std::string prefix_;
};

/// Packs an item's pieces, which are the next ones.
void WritePieces(const Planned& item, PackedPieces& pieces, ZipWriter& zip,
                 const ZipOptions& options) {
  std::uint64_t left = item.entry.size;
  uLong crc = 0;
  ZipMethod method = ZipMethod::Stored;
  for (std::size_t i = 0; i < item.pieces; ++i) {
    PackedPiece piece = pieces.Next();
    const std::uint64_t length = std::min(left, kLongestPiece);
    // The threads know their pieces only.
    crc = crc32_combine(crc, piece.crc, static_cast<z_off_t>(length));
    method = piece.stored                                  ? ZipMethod::Stored
             : options.compression == Compression::Deflate ? ZipMethod::Deflated
                                                           : ZipMethod::Zstd;
    zip.Write(std::move(piece.bytes));
    left -= length;
    if (options.report) {
      options.report(left == 0 ? 1 : 0, length);
    }
  }
  zip.End(method, static_cast<std::uint32_t>(crc));
}

/// Takes the pieces out of the plan.
void WriteArchive(Plan& plan, ZipWriter& zip, const ZipOptions& options) {
  PackedPieces pieces(std::move(plan.pieces), options.threads, options.compression);
  for (const Planned& item : plan.planned) {
    zip.Begin(item.entry);
    if (item.pieces > 0) {
      WritePieces(item, pieces, zip, options);
      continue;
    }
    // Folders and links have no pieces, and nothing in them is worth compressing.
    zip.Write(item.target);
    zip.End(ZipMethod::Stored,
            static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(item.target.data()),
                                             static_cast<uInt>(item.target.size()))));
  }
  zip.Close();
}

}  // namespace

void ZipFolder(const fs::path& folder, const fs::path& archive, const ZipOptions& options) {
  Plan plan(folder, options.topName);
  try {
    ZipWriter zip(archive, options.form);
    WriteArchive(plan, zip, options);
  } catch (...) {
    // Also after an end by the caller's report.
    std::error_code ignored;
    fs::remove(archive, ignored);
    throw;
  }
}

}  // namespace zephin::make_setup
