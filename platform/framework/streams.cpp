#include "platform/framework/streams.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>

#include "platform/framework/application.h"
#include "platform/framework/folder_item.h"
#include "platform/framework/path_bytes.h"
#include "platform/framework/system_calls.h"

namespace zephin {
namespace {

constexpr std::int64_t kBlock = std::int64_t{64} << 10U;
/// What is read or written before events run, so that the window stays alive.
constexpr std::int64_t kSlice = std::int64_t{4} << 20U;

Ref<BinaryStream> OpenStream(const std::string& path, int flags) {
  struct stat state {};
  Descriptor file = OpenPlainFile(SystemPath(path), flags, state);
  return file.IsOpen() ? MakeRef<BinaryStream>(std::move(file)) : nullptr;
}

/// Whether the path is free for a new file: what was there is removed, unless it is a folder or no
/// file at all.
bool MakeFree(const char* path) {
  struct stat state {};
  if (stat(path, &state) == 0 && !S_ISREG(state.st_mode)) {
    return false;
  }
  return lstat(path, &state) != 0 || unlink(path) == 0;
}

/// Whether an existing file can be emptied without touching any other name: no link leads to it.
bool IsUnshared(const char* path) {
  struct stat state {};
  return lstat(path, &state) == 0 && S_ISREG(state.st_mode) && state.st_nlink == 1;
}

}  // namespace

Ref<BinaryStream> FolderItem::CreateBinaryFile(const String& /*type*/) {
  // Writing into what is there would empty the user's own file behind a link of that name.
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
  // What the file says of its length is believed for one block of memory at most, since the system
  // makes up some files as they are read; the rest is asked for as it comes.
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
  // One write, so that lines of two programs don't mix.
  file_->Write(Utf8(text.Bytes() + "\n"));
}

void TextOutputStream::Close() {
  file_->Close();
}

}  // namespace zephin
