#include "tests/platform/expander/zip_writer.h"

#include <libdeflate.h>
#include <zstd.h>

#include <memory>

namespace zephin::test {
namespace {

constexpr std::uint32_t kAllBits = 0xFFFFFFFF;

// CRC and sizes, in this order in each of the three places that have them.
struct Facts {
  std::uint64_t crc = 0;
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;

  std::string In32Bits(bool zip64) const {
    return Bytes({{crc, 4}, {zip64 ? kAllBits : packedSize, 4}, {zip64 ? kAllBits : size, 4}});
  }
};

// What the headers of an entry have in common.
std::string Header(const ZipEntry& entry, const Facts& facts, std::size_t extraSize) {
  return Bytes({{20, 2},
                {entry.flags | (entry.descriptor ? 8U : 0U), 2},
                {entry.method.value_or(entry.deflate ? 8
                                       : entry.zstd  ? 93
                                                     : 0),
                 2},
                {entry.time, 4}}) +
         facts.In32Bits(entry.zip64) + Bytes({{entry.name.size(), 2}, {extraSize, 2}});
}

std::string LocalHeader(const ZipEntry& entry, const Facts& facts) {
  const std::string extra =
      entry.zip64 ? ExtraField(1, Bytes({{facts.size, 8}, {facts.packedSize, 8}})) : "";
  std::string header = "PK\3\4" + Header(entry, entry.descriptor ? Facts() : facts, extra.size()) +
                       entry.name + extra;
  const auto& [place, lie] = entry.local;
  return header.replace(place, lie.size(), lie);
}

std::string Record(const ZipEntry& entry, const Facts& facts, std::uint64_t offset) {
  std::string extra = entry.extra;
  if (entry.zip64) {
    extra += ExtraField(1, Bytes({{facts.size, 8}, {facts.packedSize, 8}, {offset, 8}}));
  } else if (entry.wideOffset) {
    extra += ExtraField(1, Bytes({{offset, 8}}));
  }
  return "PK\1\2" + Bytes({{20, 1}, {entry.host, 1}}) + Header(entry, facts, extra.size()) +
         Bytes({{0, 6},
                {entry.dosAttributes, 2},
                {entry.mode, 2},
                {entry.zip64 || entry.wideOffset ? kAllBits : offset, 4}}) +
         entry.name + extra;
}

std::string EndRecords(const ZipLayout& layout, std::uint64_t count, std::uint64_t offset,
                       std::uint64_t size) {
  std::string end;
  if (layout.zip64End) {
    end = "PK\6\6" + Bytes({{44, 8}, {0, 12}, {count, 8}, {count, 8}, {size, 8}, {offset, 8}}) +
          "PK\6\7" + Bytes({{0, 4}, {offset + size, 8}, {1, 4}});
    count = size = offset = kAllBits;
  }
  return end + "PK\5\6" + Bytes({{0, 4}, {count, 2}, {count, 2}, {size, 4}, {offset, 4}, {0, 2}});
}

}  // namespace

std::uint32_t Crc(const std::string& data) {
  return libdeflate_crc32(0, data.data(), data.size());
}

std::string Deflate(const std::string& data, int level) {
  const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
      libdeflate_alloc_compressor(level), &libdeflate_free_compressor);
  std::string packed(libdeflate_deflate_compress_bound(compressor.get(), data.size()), '\0');
  packed.resize(libdeflate_deflate_compress(compressor.get(), data.data(), data.size(),
                                            packed.data(), packed.size()));
  return packed;
}

std::string Bytes(std::initializer_list<std::pair<std::uint64_t, int>> numbers) {
  std::string bytes;
  for (auto [number, width] : numbers) {
    for (; width > 0; --width, number >>= 8U) {
      bytes += static_cast<char>(number & 0xFFU);
    }
  }
  return bytes;
}

std::string ZstdFrame(const std::string& data, int windowLog) {
  const std::unique_ptr<ZSTD_CCtx, decltype(&ZSTD_freeCCtx)> context(ZSTD_createCCtx(),
                                                                     &ZSTD_freeCCtx);
  if (windowLog != 0) {
    // With its size in it a frame would ask for no more than that.
    (void)ZSTD_CCtx_setParameter(context.get(), ZSTD_c_contentSizeFlag, 0);
    (void)ZSTD_CCtx_setParameter(context.get(), ZSTD_c_windowLog, windowLog);
  }
  std::string frame(ZSTD_compressBound(data.size()), '\0');
  frame.resize(ZSTD_compress2(context.get(), frame.data(), frame.size(), data.data(), data.size()));
  return frame;
}

std::string ExtraField(std::uint16_t tag, const std::string& body) {
  return Bytes({{tag, 2}, {body.size(), 2}}) + body;
}

std::string UnicodeNameField(const std::string& storedName, const std::string& name, int version) {
  return ExtraField(0x7075, Bytes({{version, 1}, {Crc(storedName), 4}}) + name);
}

expander::Result ExpandZip(const ScratchFolder& scratch, const std::vector<ZipEntry>& entries,
                           const ZipLayout& layout) {
  WriteFile(scratch / "a.zip", MakeZip(entries, layout));
  return expander::ExpandInto(scratch / "a.zip", scratch / "t/");
}

std::string MakeZip(const std::vector<ZipEntry>& entries, const ZipLayout& layout) {
  std::string data;
  std::string table;
  for (const ZipEntry& entry : entries) {
    const std::string packed = entry.packed.value_or(entry.deflate ? Deflate(entry.data)
                                                     : entry.zstd  ? ZstdFrame(entry.data)
                                                                   : entry.data);
    const Facts facts{entry.crc.value_or(Crc(entry.data)), entry.packedSize.value_or(packed.size()),
                      entry.size.value_or(entry.data.size())};
    table += Record(entry, facts, entry.offset.value_or(data.size()));
    data += LocalHeader(entry, facts) + packed;
    if (entry.descriptor) {
      data += "PK\7\x8" + facts.In32Bits(false);
    }
  }
  table.resize(table.size() - layout.tableCut);
  return layout.prefix + data + table +
         EndRecords(layout, layout.count.value_or(entries.size()), data.size() + layout.gap,
                    table.size());
}

}  // namespace zephin::test
