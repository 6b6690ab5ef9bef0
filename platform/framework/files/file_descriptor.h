#ifndef PLATFORM_FRAMEWORK_FILES_FILE_DESCRIPTOR_H_
#define PLATFORM_FRAMEWORK_FILES_FILE_DESCRIPTOR_H_

#include <cstddef>
#include <utility>

struct stat;

namespace zephin {

/// A file descriptor of the system, closed with this object. Only the sources of this wing use it;
/// everybody else uses the streams (streams.h).
class FileDescriptor {
 public:
  /// Owns no descriptor.
  FileDescriptor() = default;
  /// Owns `number`; a negative number means none.
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { Close(); }

  /// Whether it owns a descriptor.
  bool IsOpen() const { return number_ >= 0; }
  /// The descriptor; -1 if there is none. It stays owned.
  int Number() const { return number_; }
  /// Gives the descriptor to the caller, who must close it.
  int Release() { return std::exchange(number_, -1); }
  /// Closes the descriptor. Returns 0, or the error number of an earlier write that the system
  /// reports only now.
  int Close();

 private:
  int number_ = -1;
};

/// Opens a plain file with the flags of open(2) and fills `state`. The result is not open, with the
/// reason in `errno`, if that fails or the item is not a plain file. Never blocks, as opening a
/// pipe could.
FileDescriptor OpenPlainFile(const char* path, int flags, struct stat& state);

/// Writes all bytes. Returns 0 or an error number; part of the bytes may be written then.
[[nodiscard]] int WriteAll(const FileDescriptor& target, const char* bytes, std::size_t count);

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_FILES_FILE_DESCRIPTOR_H_
