// Writes zip archives for tests, honest ones and ones that lie in any field.
#ifndef TESTS_PLATFORM_EXPANDER_ZIP_WRITER_H_
#define TESTS_PLATFORM_EXPANDER_ZIP_WRITER_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zephin::expander::test {

struct ZipEntry {
  std::string name = {};
  std::string data = {};
  // Unix mode with its type bits; 0 for an archive of another system.
  std::uint32_t mode = 0100644;
  bool deflate = false;
  // Sizes and CRC behind the data, zeros in front of them.
  bool descriptor = false;
  // Sizes and place in the 64-bit extra field.
  bool zip64 = false;
  std::uint16_t flags = 0;
  std::uint8_t host = 3;
  std::uint32_t time = 0x58690000;  // 2024-03-09, 0:00
  std::string extra = {};           // of the central directory
  // Lies: what the record says in place of the truth.
  std::optional<std::uint16_t> method = {};
  std::optional<std::uint32_t> crc = {};
  std::optional<std::uint64_t> size = {};
  std::optional<std::uint64_t> packedSize = {};
  std::optional<std::uint64_t> offset = {};
  std::optional<std::string> packed = {};
  // Lies of the local header alone.
  std::optional<std::string> localName = {};
  std::optional<std::uint16_t> localMethod = {};
  std::optional<std::uint32_t> localCrc = {};
  std::optional<std::uint32_t> localSize = {};
};

struct ZipLayout {
  std::string prefix = {};
  bool zip64End = false;
  // What the end record says in place of the true number of entries.
  std::optional<std::uint64_t> count = {};
  // Bytes that the table of contents is cut short by.
  std::uint32_t tableCut = 0;
};

// The archive's bytes.
std::string MakeZip(const std::vector<ZipEntry>& entries, const ZipLayout& layout = {});

// An extra field: its tag, and its body with the length in front of it.
std::string ExtraField(std::uint16_t tag, const std::string& body);

// The field that replaces a name, made for `storedName`.
std::string UnicodeNameField(const std::string& storedName, const std::string& name);

// A number in `width` bytes, low byte first.
std::string LittleEndian(std::uint64_t number, int width);

}  // namespace zephin::expander::test

#endif  // TESTS_PLATFORM_EXPANDER_ZIP_WRITER_H_
