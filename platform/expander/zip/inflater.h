// Unpacks deflated data (method 8), and checks sums.
#ifndef PLATFORM_EXPANDER_ZIP_INFLATER_H_
#define PLATFORM_EXPANDER_ZIP_INFLATER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/expander/zip/decoder.h"

struct inflate_state;
struct libdeflate_decompressor;

namespace zephin::expander {

/// A small entry is unpacked by one library, a large one by another: each is the faster at it.
class Inflater final : public Decoder {
 public:
  Inflater();
  ~Inflater() override;

  [[nodiscard]] bool Whole(std::string_view packed, char* target, std::size_t size) override;
  void Begin() override;
  void Feed(std::string_view packed) override;
  bool Hungry() const override;
  std::size_t Run(char* target, std::size_t size) override;
  bool AtEnd() const override;
  bool Broken() const override { return broken_; }
  std::size_t Unused() const override;

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
