#include "platform/expander/zip/zstd_decoder.h"

#include <zstd.h>

#include <new>

namespace zephin::expander {
namespace {

/// 8 MB for each of two threads; what makes such archives with their usual settings asks for less.
constexpr int kLargestWindowLog = 23;

/// The library reads formats of its first years, too, by code that has had less scrutiny, and skips
/// frames that hold no data.
bool IsCurrentFormat(std::string_view packed) {
  constexpr std::string_view kMagic = "\x28\xB5\x2F\xFD";
  return packed.starts_with(kMagic);
}

}  // namespace

void ZstdDecoder::Free::operator()(ZSTD_DCtx_s* context) const {
  ZSTD_freeDCtx(context);
}

ZstdDecoder::ZstdDecoder() : context_(ZSTD_createDCtx()) {
  if (!context_ || ZSTD_isError(ZSTD_DCtx_setParameter(context_.get(), ZSTD_d_windowLogMax,
                                                       kLargestWindowLog)) != 0U) {
    throw std::bad_alloc();
  }
}

ZstdDecoder::~ZstdDecoder() = default;

bool ZstdDecoder::Whole(std::string_view packed, char* target, std::size_t size) {
  // The library would unpack several frames in a row.
  return IsCurrentFormat(packed) &&
         ZSTD_findFrameCompressedSize(packed.data(), packed.size()) == packed.size() &&
         ZSTD_decompressDCtx(context_.get(), target, size, packed.data(), packed.size()) == size;
}

void ZstdDecoder::Begin() {
  (void)ZSTD_DCtx_reset(context_.get(), ZSTD_reset_session_only);
  packed_ = {};
  begun_ = ended_ = broken_ = false;
}

void ZstdDecoder::Feed(std::string_view packed) {
  packed_ = packed;
  // An entry is fed in large blocks, so a first block without these bytes is all of its data.
  broken_ = broken_ || (!begun_ && !IsCurrentFormat(packed));
  begun_ = true;
}

bool ZstdDecoder::Hungry() const {
  return packed_.empty() && !ended_ && !broken_;
}

std::size_t ZstdDecoder::Run(char* target, std::size_t size) {
  if (!begun_ || ended_ || broken_) {
    return 0;
  }
  ZSTD_inBuffer in{packed_.data(), packed_.size(), 0};
  ZSTD_outBuffer out{target, size, 0};
  const std::size_t code = ZSTD_decompressStream(context_.get(), &out, &in);
  packed_.remove_prefix(in.pos);
  broken_ = ZSTD_isError(code) != 0U;
  ended_ = code == 0;
  return out.pos;
}

}  // namespace zephin::expander
