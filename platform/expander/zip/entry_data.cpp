#include "platform/expander/zip/entry_data.h"

#include <algorithm>

#include "platform/expander/zip/local_header.h"

namespace zephin::expander {
namespace {

constexpr const char* kDamaged = "its data are damaged";
constexpr const char* kWrongCrc = "its data are damaged (wrong CRC)";
constexpr const char* kWrongSize = "its data are not as long as stated";

}  // namespace

bool IsSmall(const Entry& entry) {
  return entry.size <= kSmallEntry && entry.packedSize <= kSmallEntry;
}

Cause ReadSmallEntry(const Entry& entry, Unpacker& unpacker, char* buffer, std::string_view& data) {
  data = {};
  std::uint64_t place = 0;
  if (const Cause cause = FindData(entry, unpacker.reader, place)) {
    return cause;
  }
  // A view can't be empty, so an entry without data needs none.
  if (entry.packedSize > 0) {
    data = unpacker.reader.View(place, entry.packedSize);
    if (data.empty()) {
      return Cause::System(unpacker.reader.Code());
    }
  }
  if (entry.method == kMethodDeflated) {
    if (!unpacker.inflater.Whole(data, buffer, entry.size)) {
      return Cause::Fixed(kDamaged);
    }
    data = std::string_view(buffer, entry.size);
  }
  return Cause::Fixed(Crc32(0, data.data(), data.size()) == entry.crc ? nullptr : kWrongCrc);
}

EntryStream::EntryStream(const Entry& entry, Unpacker& unpacker)
    : entry_(entry),
      unpacker_(unpacker),
      packedLeft_(entry.packedSize),
      left_(entry.size),
      fault_(FindData(entry, unpacker.reader, place_)) {
  if (entry.method == kMethodDeflated) {
    unpacker_.inflater.Begin();
  }
}

std::optional<std::size_t> EntryStream::Next(char* block, std::size_t size) {
  if (fault_) {
    return std::nullopt;
  }
  if (left_ == 0) {
    if (!EndsHere()) {
      return std::nullopt;
    }
    return crc_ == entry_.crc ? std::optional<std::size_t>(0) : Refuse(Cause::Fixed(kWrongCrc));
  }
  // Never more than stated: an entry can't fill the disk by unpacking to more.
  size = std::min<std::uint64_t>(size, left_);
  const std::optional<std::size_t> got =
      entry_.method == kMethodStored ? Stored(block, size) : Deflated(block, size);
  if (got) {
    crc_ = Crc32(crc_, block, *got);
    left_ -= *got;
  }
  return got;
}

std::optional<std::size_t> EntryStream::Refuse(const Cause& cause) {
  fault_ = cause;
  return std::nullopt;
}

std::optional<std::size_t> EntryStream::Stored(char* block, std::size_t size) {
  if (const int code = unpacker_.file.ReadAt(place_, block, size); code != 0) {
    return Refuse(Cause::System(code));
  }
  place_ += size;
  return size;
}

/// Gives the inflater more packed bytes. False, with the fault set, if there are none.
bool EntryStream::FeedInflater() {
  // Fits into the processor's cache together with the output.
  constexpr std::uint64_t kPiece = 256U << 10U;
  if (packedLeft_ == 0) {
    (void)Refuse(Cause::Fixed(kDamaged));
    return false;
  }
  const std::string_view packed = unpacker_.reader.View(place_, std::min(packedLeft_, kPiece));
  if (packed.empty()) {
    (void)Refuse(Cause::System(unpacker_.reader.Code()));
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
    // The inflater may hold output although it has taken all of its input: run it before feeding.
    const std::size_t got = inflater.Run(block + done, size - done);
    done += got;
    if (inflater.Broken()) {
      return Refuse(Cause::Fixed(kDamaged));
    }
    if (done < size && inflater.AtEnd()) {
      return Refuse(Cause::Fixed(kWrongSize));
    }
    if (got == 0 && !inflater.Hungry()) {
      return Refuse(Cause::Fixed(kDamaged));
    }
    if (got == 0 && !FeedInflater()) {
      return std::nullopt;
    }
  }
  return done;
}

/// All stated bytes are unpacked: the packed data must end here too, with no byte left over.
bool EntryStream::EndsHere() {
  if (entry_.method == kMethodStored) {
    return true;
  }
  Inflater& inflater = unpacker_.inflater;
  while (!inflater.AtEnd()) {
    char more = 0;
    if (inflater.Run(&more, 1) != 0) {
      (void)Refuse(Cause::Fixed(kWrongSize));
      return false;
    }
    if (inflater.Broken() || (!inflater.AtEnd() && !inflater.Hungry())) {
      (void)Refuse(Cause::Fixed(kDamaged));
      return false;
    }
    if (!inflater.AtEnd() && !FeedInflater()) {
      return false;
    }
  }
  // Bytes behind the stream would be data that nobody sees.
  if (inflater.Unused() + packedLeft_ != 0) {
    (void)Refuse(Cause::Fixed(kWrongSize));
    return false;
  }
  return true;
}

}  // namespace zephin::expander
