#include "platform/expander/zip/window_reader.h"

#include <algorithm>
#include <cerrno>

namespace zephin::expander {

std::string_view WindowReader::View(std::uint64_t offset, std::size_t size) {
  // How much is read at once; larger blocks drive the data out of the processor's cache.
  constexpr std::size_t kAhead = 256U << 10U;
  if (offset >= offset_ && offset - offset_ <= filled_ && size <= filled_ - (offset - offset_)) {
    return {buffer_.Data() + (offset - offset_), size};
  }
  if (size > buffer_.Size() || offset > file_.Length() || size > file_.Length() - offset) {
    code_ = EIO;
    return {};
  }
  const std::uint64_t useful = std::min(std::max(end_, offset), file_.Length()) - offset;
  const std::size_t wanted = std::max<std::size_t>(size, std::min<std::uint64_t>(useful, kAhead));
  filled_ = 0;
  code_ = file_.ReadAt(offset, buffer_.Data(), wanted);
  if (code_ != 0) {
    return {};
  }
  offset_ = offset;
  filled_ = wanted;
  return {buffer_.Data(), size};
}

}  // namespace zephin::expander
