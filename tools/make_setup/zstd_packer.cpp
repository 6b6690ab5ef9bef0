#include "tools/make_setup/zstd_packer.h"

#include <zstd.h>

#include <new>

namespace zephin::make_setup {
namespace {

/// The highest level that needs no more than the window below.
constexpr int kLevel = 19;
/// 8 MB, the most that the installer's expander takes memory for.
constexpr int kWindowLog = 23;
/// Settings and contexts fail only for want of memory; content never does.
std::size_t Needed(std::size_t result) {
  if (ZSTD_isError(result) != 0U) {
    throw std::bad_alloc();
  }
  return result;
}

}  // namespace

void ZstdPacker::Free::operator()(ZSTD_CCtx_s* context) const {
  ZSTD_freeCCtx(context);
}

ZstdPacker::ZstdPacker() : context_(ZSTD_createCCtx()) {
  if (!context_) {
    throw std::bad_alloc();
  }
  const auto set = [this](ZSTD_cParameter parameter, int value) {
    (void)Needed(ZSTD_CCtx_setParameter(context_.get(), parameter, value));
  };
  set(ZSTD_c_compressionLevel, kLevel);
  set(ZSTD_c_windowLog, kWindowLog);
}

std::string ZstdPacker::Pack(std::string_view content) {
  std::string frame(ZSTD_compressBound(content.size()), '\0');
  frame.resize(Needed(
      ZSTD_compress2(context_.get(), frame.data(), frame.size(), content.data(), content.size())));
  frame.shrink_to_fit();
  return frame;
}

void ZstdPacker::Begin(std::uint64_t size) {
  (void)Needed(ZSTD_CCtx_reset(context_.get(), ZSTD_reset_session_only));
  // With the size in its header a frame shorter than the window needs no more memory than its size.
  (void)Needed(ZSTD_CCtx_setPledgedSrcSize(context_.get(), size));
}

std::string ZstdPacker::Continue(std::string_view block, bool last) {
  std::string ready;
  std::string output(ZSTD_CStreamOutSize(), '\0');
  ZSTD_inBuffer in{block.data(), block.size(), 0};
  for (;;) {
    ZSTD_outBuffer out{output.data(), output.size(), 0};
    const std::size_t waiting = Needed(
        ZSTD_compressStream2(context_.get(), &out, &in, last ? ZSTD_e_end : ZSTD_e_continue));
    ready.append(output.data(), out.pos);
    if (last ? waiting == 0 : in.pos == in.size) {
      return ready;
    }
  }
}

}  // namespace zephin::make_setup
