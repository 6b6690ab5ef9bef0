// A block of memory for bytes that are read into it. Not cleared: pages that are never used cost
// neither time nor memory.
#ifndef PLATFORM_EXPANDER_BLOCK_H_
#define PLATFORM_EXPANDER_BLOCK_H_

#include <cstddef>
#include <memory>

namespace zephin::expander {

class Block {
 public:
  explicit Block(std::size_t size)
      : bytes_(std::make_unique_for_overwrite<char[]>(size)),  // NOLINT(modernize-avoid-c-arrays)
        size_(size) {}

  char* Data() const { return bytes_.get(); }
  std::size_t Size() const { return size_; }

 private:
  std::unique_ptr<char[]> bytes_;  // NOLINT(modernize-avoid-c-arrays): of a length known late
  std::size_t size_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_BLOCK_H_
