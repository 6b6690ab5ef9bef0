#include "setup/bundle_files.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>

#include "platform/framework/application.h"

namespace zephin {
namespace {

// Eight bytes are changed at a time in one word. Carries from a byte into its neighbour are kept
// away by adding or subtracting below the top bit and putting that bit right afterwards.
constexpr std::uint64_t kTopBits = 0x8080808080808080;
constexpr std::uint64_t kOddBytes =
    std::endian::native == std::endian::little ? 0x0100010001000100 : 0x0001000100010001;

std::uint64_t AddToBytes(std::uint64_t word, std::uint64_t steps) {
  return ((word & ~kTopBits) + (steps & ~kTopBits)) ^ ((word ^ steps) & kTopBits);
}

std::uint64_t SubtractFromBytes(std::uint64_t word, std::uint64_t steps) {
  return ((word | kTopBits) - (steps & ~kTopBits)) ^ ((word ^ ~steps) & kTopBits);
}

template <class WordStep>
void ChangeOddBytes(std::span<char> block, std::uint64_t position, int step, WordStep wordStep) {
  char* byte = block.data();
  char* const end = byte + block.size();
  const auto change = [step](char& c) {
    c = static_cast<char>(static_cast<unsigned char>(c) + step);
  };
  // The word step expects a block that begins at an even position.
  if (position % 2 == 1 && byte != end) {
    change(*byte++);
  }
  for (; end - byte >= 8; byte += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, byte, sizeof word);
    word = wordStep(word, kOddBytes);
    std::memcpy(byte, &word, sizeof word);
  }
  for (std::size_t i = 1; byte + i < end; i += 2) {
    change(byte[i]);
  }
}

constexpr std::size_t kBlock = 1 << 20;

/// Changes the bytes block by block and lets events run after each.
template <class Change>
String Changed(std::string bytes, Change change) {
  const std::span<char> all(bytes);
  for (std::size_t done = 0; done < all.size(); done += kBlock) {
    change(all.subspan(done, std::min(kBlock, all.size() - done)), done);
    // A record may hold pictures of many megabytes.
    RuntimeBackgroundTask();
  }
  return {std::move(bytes), Encoding::None};
}

}  // namespace

void ScrambleBytes(std::span<char> block, std::uint64_t position) {
  ChangeOddBytes(block, position, 1, AddToBytes);
}

void UnscrambleBytes(std::span<char> block, std::uint64_t position) {
  ChangeOddBytes(block, position, -1, SubtractFromBytes);
}

namespace ViewConst {

void DecryptStr(String& text) {
  text = Changed(std::move(text).Bytes(), UnscrambleBytes);
}

String Encrypt(const String& text) {
  return Changed(text.Bytes(), ScrambleBytes);
}

}  // namespace ViewConst

}  // namespace zephin
