// Unpacks deflated data: a small entry in one call, a large one block by block.
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

  /// True if `packed` is exactly one deflate stream of exactly `size` bytes; then they are in
  /// `target`.
  [[nodiscard]] bool Whole(std::string_view packed, char* target, std::size_t size);

  /// Starts a new stream for the calls below.
  void Begin();
  /// Passes the next packed bytes, which must stay valid until Hungry() is true again. Call it only
  /// while Hungry() is true.
  void Feed(std::string_view packed);
  bool Hungry() const;
  /// Writes up to `size` bytes and returns their number; fewer only if it needs more input, is at
  /// the stream's end, or found invalid data.
  std::size_t Run(char* target, std::size_t size);
  /// The stream has ended and Run has written all of its bytes.
  bool AtEnd() const;
  /// The data are no valid deflate stream.
  bool Broken() const { return broken_; }
  /// Number of bytes passed to Feed that are behind the stream's end.
  std::size_t Unused() const;

 private:
  struct FreeDecompressor {
    void operator()(libdeflate_decompressor* decompressor) const;
  };
  std::unique_ptr<libdeflate_decompressor, FreeDecompressor> whole_;
  std::unique_ptr<inflate_state> stream_;
  bool broken_ = false;
};

/// The CRC-32 of zip archives, continued from `crc` (0 at the start).
std::uint32_t Crc32(std::uint32_t crc, const char* bytes, std::size_t size);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_INFLATER_H_
