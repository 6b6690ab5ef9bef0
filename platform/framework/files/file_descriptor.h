#ifndef PLATFORM_FRAMEWORK_FILES_FILE_DESCRIPTOR_H_
#define PLATFORM_FRAMEWORK_FILES_FILE_DESCRIPTOR_H_

#include <cstddef>
#include <utility>

struct stat;

namespace zephin {

/// An open file of the system that is closed with this object. For the sources of this folder; what
/// others use are the streams.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  /// Takes over `number`; negative: none.
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { Close(); }

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
FileDescriptor OpenPlainFile(const char* path, int flags, struct stat& state);

/// Writes all bytes. 0, or a code of the system.
[[nodiscard]] int WriteAll(const FileDescriptor& target, const char* bytes, std::size_t count);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_FILE_DESCRIPTOR_H_
