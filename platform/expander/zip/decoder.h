// What every method of compression provides to those who unpack an entry's data.
#ifndef PLATFORM_EXPANDER_ZIP_DECODER_H_
#define PLATFORM_EXPANDER_ZIP_DECODER_H_

#include <cstddef>
#include <string_view>

namespace zephin::expander {

/// Unpacks one entry at a time: a small one in one call, a large one block by block. Holds the
/// memory for both, to be used for many entries. Never believes a size or an offset in the data.
class Decoder {
 public:
  Decoder() = default;
  virtual ~Decoder() = default;
  Decoder(const Decoder&) = delete;
  Decoder& operator=(const Decoder&) = delete;

  /// True if `packed` is exactly one stream of exactly `size` bytes; then they are in `target`.
  [[nodiscard]] virtual bool Whole(std::string_view packed, char* target, std::size_t size) = 0;

  /// Starts a new stream for the calls below.
  virtual void Begin() = 0;
  /// Passes the next packed bytes, which must stay valid until Hungry() is true again. Call it only
  /// while Hungry() is true.
  virtual void Feed(std::string_view packed) = 0;
  virtual bool Hungry() const = 0;
  /// Writes up to `size` bytes and returns their number; fewer only if it needs more input, is at
  /// the stream's end, or found invalid data.
  virtual std::size_t Run(char* target, std::size_t size) = 0;
  /// The stream has ended and Run has written all of its bytes.
  virtual bool AtEnd() const = 0;
  /// The data are no valid stream.
  virtual bool Broken() const = 0;
  /// Number of bytes passed to Feed that are behind the stream's end.
  virtual std::size_t Unused() const = 0;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_DECODER_H_
