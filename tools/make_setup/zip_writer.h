#ifndef TOOLS_MAKE_SETUP_ZIP_WRITER_H_
#define TOOLS_MAKE_SETUP_ZIP_WRITER_H_

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/make_setup/files.h"

namespace zephin::make_setup {

/// How the data of an item are packed, by the numbers of the zip format.
enum class ZipMethod : std::uint16_t { Stored = 0, Deflated = 8, Zstd = 93 };

/// An item of a zip archive.
struct ZipEntry {
  std::string name;        ///< UTF-8, with "/" between names, and at the end of a folder's.
  std::uint32_t mode = 0;  ///< Kind and permissions as the system has them (st_mode).
  std::int64_t time = 0;   ///< In seconds since 1970, UTC.
  std::uint64_t size = 0;  ///< Of the content, in bytes.
  std::uint32_t crc = 0;   ///< CRC-32 of the content.
  ZipMethod method = ZipMethod::Stored;
};

/// Whether the file is scrambled as a whole, as the payload of a bundle is.
enum class ZipForm { Plain, Scrambled };

/// Writes the container of a zip archive, with the extensions for more than 65,535 entries and
/// 4 GB where they are needed. Compresses nothing itself. All functions throw SetupError if the
/// file can't be written; the file then remains, incomplete.
class ZipWriter {
 public:
  explicit ZipWriter(const std::filesystem::path& path, ZipForm form);

  /// Begins an entry, of which only `crc` and `method` may be unknown until `End`.
  void Begin(const ZipEntry& entry);
  /// Appends to the data of the entry.
  void Write(std::string data);
  void End(ZipMethod method, std::uint32_t crc);

  /// Writes the directory and closes the file.
  void Close();
  /// Length of the file so far, in bytes.
  std::uint64_t Length() const { return length_; }

 private:
  struct Written {
    ZipEntry entry;
    std::uint64_t packedSize = 0;
    std::uint64_t position = 0;  ///< Of the local header.
  };
  void Append(std::string bytes);
  void AppendDirectory();
  static std::string LocalHeader(const Written& item);
  static std::string DirectoryHeader(const Written& item);

  FileWriter file_;
  ZipForm form_;
  std::uint64_t length_ = 0;
  std::uint64_t dataStart_ = 0;  ///< Of the entry that is being written.
  std::vector<Written> items_;
};

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_ZIP_WRITER_H_
