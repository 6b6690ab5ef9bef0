// A block of memory for bytes that are read into it. Not cleared: pages that are never used cost
// neither time nor memory.
#ifndef PLATFORM_EXPANDER_BLOCK_H_
#define PLATFORM_EXPANDER_BLOCK_H_

#include <cstddef>
#include <memory>
#include <new>

namespace zephin::expander {

class Block {
 public:
  explicit Block(std::size_t size)
      : bytes_(static_cast<char*>(::operator new(size))), size_(size) {}

  char* Data() const { return bytes_.get(); }
  std::size_t Size() const { return size_; }

 private:
  struct Release {
    void operator()(char* bytes) const { ::operator delete(bytes); }
  };

  std::unique_ptr<char, Release> bytes_;
  std::size_t size_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_BLOCK_H_
