// Unpacks zstd data (method 93).
#ifndef PLATFORM_EXPANDER_ZIP_ZSTD_DECODER_H_
#define PLATFORM_EXPANDER_ZIP_ZSTD_DECODER_H_

#include <cstddef>
#include <memory>
#include <string_view>

#include "platform/expander/zip/decoder.h"

struct ZSTD_DCtx_s;

namespace zephin::expander {

/// A stream is one frame of the current format. Refused as invalid data: a second frame, frames of
/// older formats or with a dictionary, and, block by block, one that asks for a window over 8 MB.
class ZstdDecoder final : public Decoder {
 public:
  ZstdDecoder();
  ~ZstdDecoder() override;

  [[nodiscard]] bool Whole(std::string_view packed, char* target, std::size_t size) override;
  void Begin() override;
  void Feed(std::string_view packed) override;
  bool Hungry() const override;
  std::size_t Run(char* target, std::size_t size) override;
  bool AtEnd() const override { return ended_; }
  bool Broken() const override { return broken_; }
  std::size_t Unused() const override { return packed_.size(); }

 private:
  struct Free {
    void operator()(ZSTD_DCtx_s* context) const;
  };
  std::unique_ptr<ZSTD_DCtx_s, Free> context_;
  std::string_view packed_;  ///< Passed to Feed and not yet taken.
  bool begun_ = false;       ///< The frame's first bytes have been seen.
  bool ended_ = false;
  bool broken_ = false;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_ZIP_ZSTD_DECODER_H_
