// A block of memory for bytes that are read into it. Not cleared: pages that are never used cost
// neither time nor memory.
#ifndef PLATFORM_EXPANDER_COMMON_BLOCK_H_
#define PLATFORM_EXPANDER_COMMON_BLOCK_H_

#include <cstddef>
#include <memory>

namespace zephin::expander {

class Block {
 public:
  // NOLINTBEGIN(modernize-avoid-c-arrays): std::array needs its length now, a vector clears its
  // bytes.
  explicit Block(std::size_t size)
      : bytes_(std::make_unique_for_overwrite<char[]>(size)), size_(size) {}

  char* Data() const { return bytes_.get(); }
  std::size_t Size() const { return size_; }

 private:
  std::unique_ptr<char[]> bytes_;
  // NOLINTEND(modernize-avoid-c-arrays)
  std::size_t size_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_COMMON_BLOCK_H_
