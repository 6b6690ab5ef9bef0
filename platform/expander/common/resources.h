// Resources with one owner: a block of memory and an open descriptor.
#ifndef PLATFORM_EXPANDER_COMMON_RESOURCES_H_
#define PLATFORM_EXPANDER_COMMON_RESOURCES_H_

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace zephin::expander {

/// Memory of a fixed size. It is not cleared: pages that are never used cost neither time nor
/// memory.
class Block {
 public:
  explicit Block(std::size_t size)
      : bytes_(static_cast<char*>(::operator new(size))), size_(size) {}

  char* Data() const { return bytes_.get(); }
  /// In bytes.
  std::size_t Size() const { return size_; }

 private:
  struct Free {
    void operator()(char* bytes) const { ::operator delete(bytes); }
  };

  std::unique_ptr<char, Free> bytes_;
  std::size_t size_;
};

/// An open file or folder of the system. Its destructor closes it.
class Descriptor {
 public:
  Descriptor() = default;
  /// Takes ownership of `number`; a negative one means "not open".
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      (void)Close();
      number_ = std::exchange(other.number_, -1);
    }
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { (void)Close(); }

  int Number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }

  /// Closes it and returns 0 or the system's error code. Some disks report a lost write only here.
  [[nodiscard]] int Close() {
    const int number = std::exchange(number_, -1);
    // Linux closes the descriptor even if the call was interrupted.
    return number >= 0 && ::close(number) != 0 && errno != EINTR ? errno : 0;
  }

 private:
  int number_ = -1;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_COMMON_RESOURCES_H_
