// Writes zip archives for tests, honest ones and ones that lie in any field.
#ifndef TESTS_PLATFORM_EXPANDER_ZIP_WRITER_H_
#define TESTS_PLATFORM_EXPANDER_ZIP_WRITER_H_

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/expander/expander.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {

constexpr std::uint32_t kFolder = 0040755;
constexpr std::uint32_t kLink = 0120777;
// 2024-03-09, 13:14:16.
constexpr std::uint32_t kZipTime = 0x586969C8;

struct ZipEntry {
  std::string name = {};
  std::string data = {};
  // Unix mode with its type bits; 0 for an archive of another system.
  std::uint32_t mode = 0100644;
  std::uint16_t dosAttributes = 0;
  std::uint32_t time = kZipTime;
  bool deflate = false;
  bool zstd = false;
  // Sizes and CRC behind the data, zeros in front of them.
  bool descriptor = false;
  // Sizes and offset in the 64-bit extra field, or the offset alone.
  bool zip64 = false;
  bool wideOffset = false;
  std::uint16_t flags = 0;
  std::uint8_t host = 3;
  std::string extra = {};  // of the central directory
  // Lies: what the record says in place of the truth.
  std::optional<std::uint16_t> method = {};
  std::optional<std::uint32_t> crc = {};
  std::optional<std::uint64_t> size = {};
  std::optional<std::uint64_t> packedSize = {};
  std::optional<std::uint64_t> offset = {};
  std::optional<std::string> packed = {};
  // An offset in the local header, and what is there in place of the truth.
  std::pair<std::size_t, std::string> local = {};
};

// Places in a local header, in bytes.
constexpr std::size_t kLocalFlags = 6;
constexpr std::size_t kLocalMethod = 8;
constexpr std::size_t kLocalCrc = 14;
constexpr std::size_t kLocalSize = 22;
constexpr std::size_t kLocalNameSize = 26;
constexpr std::size_t kLocalExtraSize = 28;
constexpr std::size_t kLocalName = 30;

struct ZipLayout {
  std::string prefix = {};
  bool zip64End = false;
  // What the end record says in place of the true number of entries.
  std::optional<std::uint64_t> count = {};
  // Bytes that the table of contents is cut short by.
  std::uint32_t tableCut = 0;
  // Bytes that belong in front of the table of contents and aren't written.
  std::uint64_t gap = 0;
};

// Writes an archive into the scratch folder, and expands it into the folder "t" there.
expander::Result ExpandZip(const ScratchFolder& scratch, const std::vector<ZipEntry>& entries,
                           const ZipLayout& layout = {});

// The archive's bytes.
std::string MakeZip(const std::vector<ZipEntry>& entries, const ZipLayout& layout = {});

// One zstd frame. Its window has 2^windowLog bytes, or none of its own if that is 0.
std::string ZstdFrame(const std::string& data, int windowLog = 0);

// An extra field: its tag, and its body with the length in front of it.
std::string ExtraField(std::uint16_t tag, const std::string& body);

// The field that replaces a name, made for `storedName`.
std::string UnicodeNameField(const std::string& storedName, const std::string& name,
                             int version = 1);

std::uint32_t Crc(const std::string& data);
std::string Deflate(const std::string& data, int level = 1);

// Numbers, each in so many bytes, low byte first.
std::string Bytes(std::initializer_list<std::pair<std::uint64_t, int>> numbers);

}  // namespace zephin::test

#endif  // TESTS_PLATFORM_EXPANDER_ZIP_WRITER_H_
