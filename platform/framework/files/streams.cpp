#include "platform/framework/streams.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>

#include "platform/framework/application.h"
#include "platform/framework/files/system_calls.h"
#include "platform/framework/files/system_paths.h"
#include "platform/framework/folder_item.h"

namespace zephin {
namespace {

constexpr std::int64_t kBlock = std::int64_t{64} << 10U;
/// This much is read or written between two yields, so that the window stays responsive.
constexpr std::int64_t kSlice = std::int64_t{4} << 20U;

Ref<BinaryStream> OpenStream(const std::string& path, int flags) {
  struct stat state {};
  FileDescriptor file = OpenPlainFile(SystemPath(path), flags, state);
  return file.IsOpen() ? MakeRef<BinaryStream>(std::move(file)) : nullptr;
}

/// Deletes the file or link at the path. True if nothing exists there afterwards; false for a
/// folder or device, a link to one, and an item that cannot be deleted.
bool MakeFree(const char* path) {
  struct stat state {};
  if (stat(path, &state) == 0 && !S_ISREG(state.st_mode)) {
    return false;
  }
  return lstat(path, &state) != 0 || unlink(path) == 0;
}

/// Whether a plain file exists there that has no other name, so that emptying it affects no other
/// path.
bool IsUnshared(const char* path) {
  struct stat state {};
  return lstat(path, &state) == 0 && S_ISREG(state.st_mode) && state.st_nlink == 1;
}

}  // namespace

Ref<BinaryStream> FolderItem::CreateBinaryFile(const String& /*type*/) {
  // Opening an existing link for writing would empty the user's own file behind it. O_EXCL and
  // O_NOFOLLOW refuse a link that another process makes after the deletion.
  if (MakeFree(SystemPath(path_))) {
    return OpenStream(path_, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
  }
  return IsUnshared(SystemPath(path_)) ? OpenStream(path_, O_WRONLY | O_TRUNC | O_NOFOLLOW)
                                       : nullptr;
}

Ref<BinaryStream> FolderItem::OpenAsBinaryFile(bool writeable) {
  return OpenStream(path_, writeable ? O_RDWR : O_RDONLY);
}

Ref<BinaryStream> BinaryStream::Open(const Ref<FolderItem>& item, bool writeable) {
  return item->OpenAsBinaryFile(writeable);
}

std::int64_t BinaryStream::Length() const {
  struct stat state {};
  return fstat(descriptor_.Number(), &state) == 0 ? state.st_size : 0;
}

String BinaryStream::Read(std::int64_t count) {
  std::string bytes;
  // The length is only a hint: files that the system generates while they are read report 0. Behind
  // the reported end one block is requested at a time.
  const std::int64_t here = lseek(descriptor_.Number(), 0, SEEK_CUR);
  std::int64_t step = std::max(Length() - here, kBlock);
  bytes.reserve(static_cast<std::size_t>(std::max(std::min(count, step), std::int64_t{0})));
  while (count > 0) {
    const auto wanted = static_cast<std::size_t>(std::min({count, step, kSlice}));
    const std::size_t start = bytes.size();
    bytes.resize(start + wanted);
    const std::size_t got = ReadInto(std::span(bytes).subspan(start));
    bytes.resize(start + got);
    if (got < wanted) {
      break;
    }
    count -= static_cast<std::int64_t>(got);
    step = std::max(step - static_cast<std::int64_t>(got), kBlock);
    if (wanted == kSlice) {
      RuntimeBackgroundTask();
    }
  }
  return {std::move(bytes), Encoding::None};
}

std::size_t BinaryStream::ReadInto(std::span<char> block) {
  std::size_t got = 0;
  while (got < block.size()) {
    const ssize_t count = read(descriptor_.Number(), block.data() + got, block.size() - got);
    if (count == 0) {
      break;
    }
    if (count > 0) {
      got += static_cast<std::size_t>(count);
    } else if (errno != EINTR) {
      failed_ = true;
      break;
    }
  }
  return got;
}

void BinaryStream::ForgetWhatWasRead() {
  const std::int64_t here = lseek(descriptor_.Number(), 0, SEEK_CUR);
  if (here > forgotten_) {
    GiveBackRoom(descriptor_, forgotten_, here - forgotten_);
    forgotten_ = here;
  }
}

void BinaryStream::Write(const String& bytes) {
  constexpr auto kMost = static_cast<std::size_t>(kSlice);
  std::span<const char> left(bytes.View());
  while (left.size() > kMost && !failed_) {
    WriteFrom(left.first(kMost));
    left = left.subspan(kMost);
    RuntimeBackgroundTask();
  }
  if (!failed_) {
    WriteFrom(left);
  }
}

void BinaryStream::WriteFrom(std::span<const char> block) {
  if (WriteAll(descriptor_, block.data(), block.size()) != 0) {
    failed_ = true;
  }
}

void BinaryStream::Flush() {}

void BinaryStream::Close() {
  if (descriptor_.Close() != 0) {
    failed_ = true;
  }
}

Ref<TextInputStream> TextInputStream::Open(const Ref<FolderItem>& item) {
  if (item.IsNil()) {
    return nullptr;
  }
  const Ref<BinaryStream> file = item->OpenAsBinaryFile(false);
  return file.IsNil() ? nullptr : MakeRef<TextInputStream>(file);
}

String TextInputStream::ReadAll() {
  return file_->Read(INT64_MAX);
}

Ref<TextOutputStream> TextOutputStream::Append(const Ref<FolderItem>& item) {
  if (item.IsNil()) {
    return nullptr;
  }
  const Ref<BinaryStream> file =
      OpenStream(item->NativePath().Bytes(), O_WRONLY | O_CREAT | O_APPEND);
  return file.IsNil() ? nullptr : MakeRef<TextOutputStream>(file);
}

void TextOutputStream::WriteLine(const String& text) {
  // One write for the whole line, so that lines of two programs do not mix.
  file_->Write(Utf8(text.Bytes() + "\n"));
}

void TextOutputStream::Close() {
  file_->Close();
}

}  // namespace zephin
