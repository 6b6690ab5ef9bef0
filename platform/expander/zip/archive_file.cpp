#include "platform/expander/zip/archive_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

namespace zephin::expander {

int ArchiveFile::Open(const std::string& path) {
  // O_NONBLOCK: opening a pipe must not wait for its other end.
  Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!descriptor.IsOpen()) {
    return errno;
  }
  return Take(std::move(descriptor));
}

int ArchiveFile::Take(Descriptor descriptor) {
  struct stat status {};
  if (::fstat(descriptor.Number(), &status) != 0) {
    return errno;
  }
  if (S_ISDIR(status.st_mode)) {
    return EISDIR;
  }
  if (!S_ISREG(status.st_mode)) {
    return EINVAL;
  }
  descriptor_ = std::move(descriptor);
  // Not asked for again: all offsets were checked against this length.
  length_ = static_cast<std::uint64_t>(status.st_size);
  return 0;
}

int ArchiveFile::ReadAt(std::uint64_t offset, void* target, std::size_t size) const {
  if (offset > length_ || size > length_ - offset) {
    return EIO;
  }
  auto* next = static_cast<char*>(target);
  while (size > 0) {
    const ssize_t got = ::pread(descriptor_.Number(), next, size, static_cast<off_t>(offset));
    if (got < 0 && errno == EINTR) {
      continue;
    }
    if (got <= 0) {
      return got < 0 ? errno : EIO;
    }
    next += got;
    offset += static_cast<std::uint64_t>(got);
    size -= static_cast<std::size_t>(got);
  }
  return 0;
}

std::string_view WindowReader::View(std::uint64_t offset, std::size_t size) {
  // Larger reads evict data from the processor's cache before they are used.
  constexpr std::size_t kAhead = 256U << 10U;
  if (offset >= offset_ && offset - offset_ <= filled_ && size <= filled_ - (offset - offset_)) {
    return {buffer_.Data() + (offset - offset_), size};
  }
  if (size > buffer_.Size() || offset > file_.Length() || size > file_.Length() - offset) {
    code_ = EIO;
    return {};
  }
  // Never less than asked for: headers can be longer than the entry's end allows, which is checked
  // after they are read.
  const std::uint64_t useful = std::min(std::max(end_, offset), file_.Length()) - offset;
  std::size_t wanted = std::max<std::size_t>(size, std::min<std::uint64_t>(useful, kAhead));
  filled_ = 0;
  code_ = file_.ReadAt(offset, buffer_.Data(), wanted);
  if (code_ != 0 && wanted > size) {
    // Bytes that were not asked for must not make this entry fail.
    wanted = size;
    code_ = file_.ReadAt(offset, buffer_.Data(), wanted);
  }
  if (code_ != 0) {
    return {};
  }
  offset_ = offset;
  filled_ = wanted;
  return {buffer_.Data(), size};
}

}  // namespace zephin::expander
