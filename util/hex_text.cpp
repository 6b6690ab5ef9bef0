#include "util/hex_text.h"

#include <string>

#include "platform/framework/application.h"
#include "platform/framework/text.h"

namespace zephin::ViewConst {
namespace {

constexpr std::size_t kBlock = 1 << 20;

/// Drops a half unit at the end of UTF-16 (low byte first), and turns a surrogate without its other
/// half into U+FFFD: one invalid unit would make the whole page unreadable.
void RepairUnits(std::string& bytes) {
  constexpr unsigned kHigh = 0xD8;
  constexpr unsigned kLow = 0xDC;
  bytes.resize(bytes.size() / 2 * 2);
  const auto kindAt = [&bytes](std::size_t unit) {
    return unit + 1 < bytes.size() ? static_cast<unsigned char>(bytes[unit + 1]) & 0xFCU : 0U;
  };
  for (std::size_t unit = 0; unit < bytes.size(); unit += 2) {
    const unsigned kind = kindAt(unit);
    if (kind == kHigh && kindAt(unit + 2) == kLow) {
      unit += 2;
    } else if (kind == kHigh || kind == kLow) {
      bytes.replace(unit, 2, "\xFD\xFF");
    }
  }
}

}  // namespace

void MemoryBlockHexToByte(std::span<const char> hexBlock, std::span<char> byteBlock,
                          std::int64_t count) {
  const std::uint8_t* const pairs = HexPairs().data();
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
    byteBlock[i] = static_cast<char>(HexByte(pairs, &hexBlock[2 * i]));
    // An installer with a long text must stay responsive while it decodes it.
    if (i % kBlock == 0) {
      RuntimeBackgroundTask();
    }
  }
}

void MemoryBlockByteSwitchPPC(std::span<char> /*block*/, std::int64_t /*count*/) {}

String UnicodeFromHex(const String& text, bool flag) {
  if (!flag) {
    return text;
  }
  // In bytes: the digits are ASCII, but a damaged record may hold anything.
  const std::int64_t count = LenB(text) / 2;
  std::string bytes(static_cast<std::size_t>(count), '\0');
  MemoryBlockHexToByte(text.View(), bytes, count);
  // The digits are always of the low byte first.
  MemoryBlockByteSwitchPPC(bytes, count);
  RepairUnits(bytes);
  return ConvertEncoding(String(std::move(bytes), Encoding::UTF16), Encoding::UTF8);
}

}  // namespace zephin::ViewConst
