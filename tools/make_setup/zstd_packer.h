#ifndef TOOLS_MAKE_SETUP_ZSTD_PACKER_H_
#define TOOLS_MAKE_SETUP_ZSTD_PACKER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct ZSTD_CCtx_s;

namespace zephin::make_setup {

/// Makes zstd frames, each of one content, that the installer's expander reads.
class ZstdPacker {
 public:
  ZstdPacker();

  /// The frame of a content that is in memory.
  std::string Pack(std::string_view content);

  /// Begins a frame of `size` bytes of content.
  void Begin(std::uint64_t size);
  /// Continues the frame, and ends it if the block is the last. Gives what is ready of its bytes.
  std::string Continue(std::string_view block, bool last);

 private:
  struct Free {
    void operator()(ZSTD_CCtx_s* context) const;
  };
  std::unique_ptr<ZSTD_CCtx_s, Free> context_;
};

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_ZSTD_PACKER_H_
