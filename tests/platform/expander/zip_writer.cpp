#include "tests/platform/expander/zip_writer.h"

#include <libdeflate.h>

#include <memory>
#include <stdexcept>

namespace zephin::expander::test {
namespace {

std::string Deflate(const std::string& data) {
  const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
      libdeflate_alloc_compressor(1), &libdeflate_free_compressor);
  std::string packed(libdeflate_deflate_compress_bound(compressor.get(), data.size()), '\0');
  packed.resize(libdeflate_deflate_compress(compressor.get(), data.data(), data.size(),
                                            packed.data(), packed.size()));
  return packed;
}

// What both headers of an entry are made from.
struct Facts {
  std::string packed;
  std::uint32_t crc = 0;
  std::uint64_t size = 0;
  std::uint64_t packedSize = 0;
  std::uint64_t offset = 0;
  std::uint16_t method = 0;
  std::uint16_t flags = 0;
};

Facts Collect(const ZipEntry& entry) {
  Facts facts;
  facts.packed = entry.packed.value_or(entry.deflate ? Deflate(entry.data) : entry.data);
  facts.crc = entry.crc.value_or(libdeflate_crc32(0, entry.data.data(), entry.data.size()));
  facts.size = entry.size.value_or(entry.data.size());
  facts.packedSize = entry.packedSize.value_or(facts.packed.size());
  facts.method = entry.method.value_or(entry.deflate ? 8 : 0);
  facts.flags = static_cast<std::uint16_t>(entry.flags | (entry.descriptor ? 8U : 0U));
  return facts;
}

std::string Sizes(std::uint32_t crc, std::uint64_t packedSize, std::uint64_t size, bool zip64) {
  constexpr std::uint64_t kAllBits = 0xFFFFFFFF;
  return LittleEndian(crc, 4) + LittleEndian(zip64 ? kAllBits : packedSize, 4) +
         LittleEndian(zip64 ? kAllBits : size, 4);
}

std::string LocalHeader(const ZipEntry& entry, const Facts& facts) {
  const std::string name = entry.localName.value_or(entry.name);
  const std::string extra =
      entry.zip64 ? ExtraField(1, LittleEndian(facts.size, 8) + LittleEndian(facts.packedSize, 8))
                  : std::string();
  return "PK\3\4" + LittleEndian(20, 2) + LittleEndian(facts.flags, 2) +
         LittleEndian(entry.localMethod.value_or(facts.method), 2) + LittleEndian(entry.time, 4) +
         (entry.descriptor ? Sizes(0, 0, 0, false)
                           : Sizes(entry.localCrc.value_or(facts.crc), facts.packedSize,
                                   entry.localSize.value_or(facts.size), entry.zip64)) +
         LittleEndian(name.size(), 2) + LittleEndian(extra.size(), 2) + name + extra;
}

std::string Record(const ZipEntry& entry, const Facts& facts) {
  std::string extra = entry.extra;
  if (entry.zip64) {
    extra += ExtraField(1, LittleEndian(facts.size, 8) + LittleEndian(facts.packedSize, 8) +
                               LittleEndian(facts.offset, 8));
  }
  return "PK\1\2" + LittleEndian(20U | static_cast<std::uint32_t>(entry.host) << 8U, 2) +
         LittleEndian(20, 2) + LittleEndian(facts.flags, 2) + LittleEndian(facts.method, 2) +
         LittleEndian(entry.time, 4) + Sizes(facts.crc, facts.packedSize, facts.size, entry.zip64) +
         LittleEndian(entry.name.size(), 2) + LittleEndian(extra.size(), 2) + LittleEndian(0, 6) +
         LittleEndian(static_cast<std::uint64_t>(entry.mode) << 16U, 4) +
         LittleEndian(entry.zip64 ? 0xFFFFFFFF : facts.offset, 4) + entry.name + extra;
}

std::string EndRecords(const ZipLayout& layout, std::uint64_t count, std::uint64_t offset,
                       std::uint64_t size) {
  std::string end;
  if (layout.zip64End) {
    end = "PK\6\6" + LittleEndian(44, 8) + LittleEndian(0, 12) + LittleEndian(count, 8) +
          LittleEndian(count, 8) + LittleEndian(size, 8) + LittleEndian(offset, 8) + "PK\6\7" +
          LittleEndian(0, 4) + LittleEndian(offset + size, 8) + LittleEndian(1, 4);
    count = 0xFFFF;
    size = offset = 0xFFFFFFFF;
  }
  return end + "PK\5\6" + LittleEndian(0, 4) + LittleEndian(count, 2) + LittleEndian(count, 2) +
         LittleEndian(size, 4) + LittleEndian(offset, 4) + LittleEndian(0, 2);
}

}  // namespace

std::string LittleEndian(std::uint64_t number, int width) {
  std::string bytes;
  for (int i = 0; i < width; ++i) {
    bytes += static_cast<char>(i < 8 ? number >> (8U * static_cast<unsigned>(i)) & 0xFFU : 0U);
  }
  return bytes;
}

std::string ExtraField(std::uint16_t tag, const std::string& body) {
  return LittleEndian(tag, 2) + LittleEndian(body.size(), 2) + body;
}

std::string UnicodeNameField(const std::string& storedName, const std::string& name) {
  return ExtraField(
      0x7075,
      "\1" + LittleEndian(libdeflate_crc32(0, storedName.data(), storedName.size()), 4) + name);
}

std::string MakeZip(const std::vector<ZipEntry>& entries, const ZipLayout& layout) {
  std::string data;
  std::string table;
  for (const ZipEntry& entry : entries) {
    Facts facts = Collect(entry);
    facts.offset = entry.offset.value_or(data.size());
    data += LocalHeader(entry, facts);
    data += facts.packed;
    if (entry.descriptor) {
      data += "PK\7\x8" + Sizes(facts.crc, facts.packedSize, facts.size, false);
    }
    table += Record(entry, facts);
  }
  table.resize(table.size() - layout.tableCut);
  return layout.prefix + data + table +
         EndRecords(layout, layout.count.value_or(entries.size()), data.size(), table.size());
}

}  // namespace zephin::expander::test
