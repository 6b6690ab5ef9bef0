#include "platform/expander/zip/entry_stream.h"

#include <algorithm>
#include <cerrno>

#include "platform/expander/common/faults.h"
#include "platform/expander/zip/local_header.h"

namespace zephin::expander {
namespace {

constexpr const char* kDamaged = "its data are damaged";
constexpr const char* kWrongCrc = "its data are damaged (wrong CRC)";
constexpr const char* kWrongSize = "its data are not as long as stated";

}  // namespace

EntryStream::EntryStream(const Entry& entry, Unpacker& unpacker)
    : entry_(entry), unpacker_(unpacker), packedLeft_(entry.packedSize), left_(entry.size) {
  const DataPlace place = FindData(entry, unpacker.reader);
  place_ = place.offset;
  refusal_ = place.refusal;
  code_ = place.code;
  if (!Small() && entry.method == kMethodDeflated) {
    unpacker_.inflater.Begin();
  }
}

std::optional<std::string_view> EntryStream::Whole(char* buffer) {
  if (refusal_ != nullptr || code_ != 0) {
    return std::nullopt;
  }
  std::string_view data;
  if (packedLeft_ > 0) {
    data = unpacker_.reader.View(place_, packedLeft_);
    if (data.empty()) {
      code_ = unpacker_.reader.Code();
      return std::nullopt;
    }
  }
  if (entry_.method == kMethodDeflated) {
    if (!unpacker_.inflater.Whole(data, buffer, entry_.size)) {
      refusal_ = kDamaged;
      return std::nullopt;
    }
    data = std::string_view(buffer, entry_.size);
  }
  if (Crc32(0, data.data(), data.size()) != entry_.crc) {
    refusal_ = kWrongCrc;
    return std::nullopt;
  }
  return data;
}

std::optional<std::size_t> EntryStream::Next(char* block, std::size_t size) {
  if (refusal_ != nullptr || code_ != 0) {
    return std::nullopt;
  }
  if (left_ == 0) {
    if (!EndsHere()) {
      return std::nullopt;
    }
    return crc_ == entry_.crc ? std::optional<std::size_t>(0) : Refuse(kWrongCrc);
  }
  size = std::min<std::uint64_t>(size, left_);
  const std::optional<std::size_t> got =
      entry_.method == kMethodStored ? Stored(block, size) : Deflated(block, size);
  if (got) {
    crc_ = Crc32(crc_, block, *got);
    left_ -= *got;
  }
  return got;
}

std::string EntryStream::Fault() const {
  return refusal_ != nullptr ? refusal_ : SystemText(code_);
}

std::optional<std::size_t> EntryStream::Refuse(const char* why) {
  refusal_ = why;
  return std::nullopt;
}

std::optional<std::size_t> EntryStream::Fail(int code) {
  code_ = code;
  return std::nullopt;
}

std::optional<std::size_t> EntryStream::Stored(char* block, std::size_t size) {
  if (const int code = unpacker_.file.ReadAt(place_, block, size); code != 0) {
    return Fail(code);
  }
  place_ += size;
  return size;
}

bool EntryStream::FeedInflater() {
  constexpr std::uint64_t kPiece = 256U << 10U;
  if (packedLeft_ == 0) {
    (void)Refuse(kDamaged);
    return false;
  }
  const std::string_view packed = unpacker_.reader.View(place_, std::min(packedLeft_, kPiece));
  if (packed.empty()) {
    (void)Fail(unpacker_.reader.Code());
    return false;
  }
  unpacker_.inflater.Feed(packed);
  place_ += packed.size();
  packedLeft_ -= packed.size();
  return true;
}

std::optional<std::size_t> EntryStream::Deflated(char* block, std::size_t size) {
  Inflater& inflater = unpacker_.inflater;
  std::size_t done = 0;
  while (done < size) {
    // The last bytes may wait in the inflater when all of its input is taken: run first, feed then.
    const std::size_t got = inflater.Run(block + done, size - done);
    done += got;
    if (inflater.Broken()) {
      return Refuse(kDamaged);
    }
    if (done < size && inflater.AtEnd()) {
      return Refuse(kWrongSize);
    }
    if (got == 0 && (!inflater.Hungry() || !FeedInflater())) {
      return refusal_ == nullptr && code_ == 0 ? Refuse(kDamaged) : std::nullopt;
    }
  }
  return done;
}

/// All stated bytes are out: the packed data must be at their end too, and hold no byte more.
bool EntryStream::EndsHere() {
  if (entry_.method == kMethodStored) {
    return true;
  }
  Inflater& inflater = unpacker_.inflater;
  while (!inflater.AtEnd()) {
    char more = 0;
    if (inflater.Run(&more, 1) != 0) {
      (void)Refuse(kWrongSize);
      return false;
    }
    if (inflater.Broken()) {
      (void)Refuse(kDamaged);
      return false;
    }
    if (!inflater.AtEnd() && !(inflater.Hungry() && FeedInflater())) {
      (void)(refusal_ == nullptr && code_ == 0 ? Refuse(kDamaged) : std::nullopt);
      return false;
    }
  }
  if (inflater.Unused() + packedLeft_ != 0) {
    (void)Refuse(kWrongSize);
    return false;
  }
  return true;
}

}  // namespace zephin::expander
