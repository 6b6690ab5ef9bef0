#ifndef PLATFORM_FRAMEWORK_STREAMS_H_
#define PLATFORM_FRAMEWORK_STREAMS_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "platform/framework/files/file_descriptor.h"
#include "platform/framework/ref.h"
#include "platform/framework/string.h"

namespace zephin {

class FolderItem;

/// An open file of bytes; the position is at its beginning after opening. The file is closed with
/// the last handle or by `Close`. If the file is deleted or replaced, the stream continues on the
/// old bytes. Errors throw nothing: they show as a short result or in `Failed`.
class BinaryStream {
 public:
  /// Opens an existing file for reading, or for reading and writing. `item` must not be nil. Nil if
  /// that fails or the item is not a plain file.
  static Ref<BinaryStream> Open(const Ref<FolderItem>& item, bool writeable);

  /// Takes over the descriptor.
  explicit BinaryStream(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

  /// Current size of the file in bytes.
  std::int64_t Length() const;
  /// Reads up to `count` bytes from the current position, without encoding: fewer at the end of the
  /// file or after an error. Memory is allocated for the bytes that exist, not for `count`; throws
  /// if that fails.
  String Read(std::int64_t count);
  /// Reads into the caller's block and returns the number of bytes read.
  std::size_t ReadInto(std::span<char> block);
  /// Promises that the bytes before the current position will not be read again. If the file has
  /// been deleted and is open for writing, their disk space is freed where the file system can do
  /// so. Fails silently.
  void ForgetWhatWasRead();
  /// Writes all bytes, or sets `Failed`. `WriteFrom` writes the caller's block.
  void Write(const String& bytes);
  void WriteFrom(std::span<const char> block);
  /// Has no effect: each write has passed its bytes to the system, and there is no buffer.
  void Flush();
  /// Closes the file. Sets `Failed` if the system reports a write error only now.
  void Close();
  /// Whether any read, write or close has failed so far.
  bool Failed() const { return failed_; }

 private:
  FileDescriptor descriptor_;
  std::int64_t forgotten_ = 0;  ///< Bytes at the beginning of the file whose space is freed.
  bool failed_ = false;
};

/// A file that is read as text.
class TextInputStream {
 public:
  /// Nil if the item is nil, is not a plain file, or cannot be opened.
  static Ref<TextInputStream> Open(const Ref<FolderItem>& item);
  explicit TextInputStream(Ref<BinaryStream> file) : file_(std::move(file)) {}
  /// The rest of the file, byte for byte, without a declared encoding.
  String ReadAll();

 private:
  Ref<BinaryStream> file_;
};

/// A file that is written as text.
class TextOutputStream {
 public:
  /// Opens the file for writing at its end and creates it if necessary. A link is followed: the
  /// existing text stays. Nil if that fails or the item is nil.
  static Ref<TextOutputStream> Append(const Ref<FolderItem>& item);
  explicit TextOutputStream(Ref<BinaryStream> file) : file_(std::move(file)) {}
  /// Writes the text and a line feed. Errors are ignored.
  void WriteLine(const String& text);
  void Close();

 private:
  Ref<BinaryStream> file_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_STREAMS_H_
