#ifndef PLATFORM_FRAMEWORK_FILES_DESCRIPTOR_H_
#define PLATFORM_FRAMEWORK_FILES_DESCRIPTOR_H_

#include <cstddef>
#include <utility>

struct stat;

namespace zephin {

/// An open file of the system that is closed with this object. For the sources of this folder; what
/// others use are the streams.
class Descriptor {
 public:
  Descriptor() = default;
  /// Takes over `number`; negative: none.
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  bool IsOpen() const { return number_ >= 0; }
  int Number() const { return number_; }
  int Release() { return std::exchange(number_, -1); }
  /// Closes it now. 0, or the code of a write that the system reports only here.
  int Close();

 private:
  int number_ = -1;
};

/// Opens a plain file with the flags of open(2), and fills `state`. Gives none for anything else
/// and where that fails, with the code in `errno`. It never waits, as the opening of a pipe would.
Descriptor OpenPlainFile(const char* path, int flags, struct stat& state);

/// Writes all bytes. 0, or a code of the system.
[[nodiscard]] int WriteAll(const Descriptor& target, const char* bytes, std::size_t count);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_DESCRIPTOR_H_
