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

/// An open file of bytes, from its beginning. It is closed with its last reference, or by hand, and
/// goes on to read and write its bytes if the file is deleted or replaced meanwhile. Errors are not
/// raised: a short result or `Failed` tells them.
class BinaryStream {
 public:
  /// Opens the file of an existing item, which must not be nil. Nil if that fails.
  static Ref<BinaryStream> Open(const Ref<FolderItem>& item, bool writeable);

  /// Takes over the descriptor.
  explicit BinaryStream(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

  /// Size of the file in bytes, now.
  std::int64_t Length() const;
  /// Up to `count` bytes from the present position, without encoding; fewer at the end of the file
  /// or after an error. Memory is taken for what is there, not for `count`; too much for it raises.
  String Read(std::int64_t count);
  /// The same into a block of the caller's; the number of bytes read.
  std::size_t ReadInto(std::span<char> block);
  /// What has been read will not be read again: if the file has been deleted since it was opened to
  /// be written, and the system can do so, the disk gets its room back. Silent.
  void ForgetWhatWasRead();
  /// Writes all bytes, or sets `Failed`. `WriteFrom` writes a block of the caller's.
  void Write(const String& bytes);
  void WriteFrom(std::span<const char> block);
  /// Hands all that was written to the system. Each write has done so already: there is no buffer.
  void Flush();
  /// Closes the file; a write that the system reports only now sets `Failed`.
  void Close();
  /// Whether a read, write, flush or close has failed so far.
  bool Failed() const { return failed_; }

 private:
  FileDescriptor descriptor_;
  std::int64_t forgotten_ = 0;  ///< Bytes from the file's beginning.
  bool failed_ = false;
};

/// A file that is read as text.
class TextInputStream {
 public:
  /// Nil if the item is nil or its file can't be opened.
  static Ref<TextInputStream> Open(const Ref<FolderItem>& item);
  explicit TextInputStream(Ref<BinaryStream> file) : file_(std::move(file)) {}
  /// All that is left, with every byte kept and no encoding declared.
  String ReadAll();

 private:
  Ref<BinaryStream> file_;
};

/// A file that is written as text.
class TextOutputStream {
 public:
  /// Opens the item's file for writing at its end and makes it if need be. Nil if that fails or the
  /// item is nil.
  static Ref<TextOutputStream> Append(const Ref<FolderItem>& item);
  explicit TextOutputStream(Ref<BinaryStream> file) : file_(std::move(file)) {}
  /// Writes the text and a line feed.
  void WriteLine(const String& text);
  void Close();

 private:
  Ref<BinaryStream> file_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_STREAMS_H_
