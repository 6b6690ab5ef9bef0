// Deflated data made plain again: a small entry in one go, a large one block by block.
#ifndef PLATFORM_EXPANDER_ZIP_INFLATER_H_
#define PLATFORM_EXPANDER_ZIP_INFLATER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

struct inflate_state;
struct libdeflate_decompressor;

namespace zephin::expander {

class Inflater {
 public:
  Inflater();
  ~Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  /// True if all of `packed` is one deflate stream of exactly `size` bytes; they are in `target`
  /// then.
  [[nodiscard]] bool Whole(std::string_view packed, char* target, std::size_t size);

  /// Begins a new stream.
  void Begin();
  /// Gives the stream its next bytes, which must stay where they are until Hungry(). Only when
  /// hungry.
  void Feed(std::string_view packed);
  bool Hungry() const;
  /// Writes up to `size` bytes and gives how many; fewer only when it is hungry, at its end or
  /// broken.
  std::size_t Run(char* target, std::size_t size);
  /// The stream has ended and every byte of it was taken by Run.
  bool AtEnd() const;
  bool Broken() const { return broken_; }
  /// Bytes that were fed and belong to what follows the stream.
  std::size_t Unused() const;

 private:
  struct FreeDecompressor {
    void operator()(libdeflate_decompressor* decompressor) const;
  };
  std::unique_ptr<libdeflate_decompressor, FreeDecompressor> whole_;
  std::unique_ptr<inflate_state> stream_;
  bool broken_ = false;
};

/// CRC-32 of zip archives, continued from `crc` (0 at the start).
std::uint32_t Crc32(std::uint32_t crc, const char* bytes, std::size_t size);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_INFLATER_H_
