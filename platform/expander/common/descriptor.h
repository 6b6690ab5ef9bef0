// An open file or folder of the system, closed by its owner's end.
#ifndef PLATFORM_EXPANDER_COMMON_DESCRIPTOR_H_
#define PLATFORM_EXPANDER_COMMON_DESCRIPTOR_H_

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace zephin::expander {

class Descriptor {
 public:
  Descriptor() = default;
  /// Owns `number`; a negative one stands for "not open".
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

  /// Closes it and gives 0 or the system's error code: a disk may tell of a lost write only here.
  [[nodiscard]] int Close() {
    const int number = std::exchange(number_, -1);
    /// An interruption has closed it, too.
    return number >= 0 && ::close(number) != 0 && errno != EINTR ? errno : 0;
  }

 private:
  int number_ = -1;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_COMMON_DESCRIPTOR_H_
