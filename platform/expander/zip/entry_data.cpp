#include "platform/expander/zip/entry_data.h"

#include <algorithm>

#include "platform/expander/zip/local_header.h"

namespace zephin::expander {
namespace {

constexpr const char* kDamaged = "its data are damaged";
constexpr const char* kWrongCrc = "its data are damaged (wrong CRC)";
constexpr const char* kWrongSize = "its data are not as long as stated";

}  // namespace

Decoder* Unpacker::DecoderFor(const Entry& entry) {
  switch (entry.method) {
    case kMethodDeflated:
      return &inflater;
    case kMethodZstd:
      return &zstd;
    default:
      return nullptr;
  }
}

bool IsSmall(const Entry& entry) {
  return entry.size <= kSmallEntry && entry.packedSize <= kSmallEntry;
}

Cause ReadSmallEntry(const Entry& entry, Unpacker& unpacker, char* buffer, std::string_view& data) {
  data = {};
  std::uint64_t place = 0;
  if (const Cause cause = FindData(entry, unpacker.reader, place)) {
    return cause;
  }
  if (entry.packedSize > 0) {
    data = unpacker.reader.View(place, entry.packedSize);
    if (data.empty()) {
      return Cause::System(unpacker.reader.Code());
    }
  }
  if (Decoder* const decoder = unpacker.DecoderFor(entry); decoder != nullptr) {
    if (!decoder->Whole(data, buffer, entry.size)) {
      return Cause::Fixed(kDamaged);
    }
    data = std::string_view(buffer, entry.size);
  }
  return Cause::Fixed(Crc32(0, data.data(), data.size()) == entry.crc ? nullptr : kWrongCrc);
}

EntryStream::EntryStream(const Entry& entry, Unpacker& unpacker)
    : entry_(entry),
      unpacker_(unpacker),
      decoder_(unpacker.DecoderFor(entry)),
      packedLeft_(entry.packedSize),
      left_(entry.size),
      fault_(FindData(entry, unpacker.reader, place_)) {
  if (decoder_ != nullptr) {
    decoder_->Begin();
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
  size = std::min<std::uint64_t>(size, left_);
  const std::optional<std::size_t> got =
      decoder_ == nullptr ? Stored(block, size) : Decoded(block, size);
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

/// Gives the decoder more packed bytes. False, with the fault set, if there are none.
bool EntryStream::FeedDecoder() {
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
  decoder_->Feed(packed);
  place_ += packed.size();
  packedLeft_ -= packed.size();
  return true;
}

std::optional<std::size_t> EntryStream::Decoded(char* block, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    // The decoder may hold output although it has taken all of its input: run it before feeding.
    const std::size_t got = decoder_->Run(block + done, size - done);
    done += got;
    if (decoder_->Broken()) {
      return Refuse(Cause::Fixed(kDamaged));
    }
    if (done < size && decoder_->AtEnd()) {
      return Refuse(Cause::Fixed(kWrongSize));
    }
    if (got == 0 && !decoder_->Hungry()) {
      return Refuse(Cause::Fixed(kDamaged));
    }
    if (got == 0 && !FeedDecoder()) {
      return std::nullopt;
    }
  }
  return done;
}

/// All stated bytes are unpacked: the packed data must end here too, with no byte left over.
bool EntryStream::EndsHere() {
  if (decoder_ == nullptr) {
    return true;
  }
  while (!decoder_->AtEnd()) {
    char more = 0;
    if (decoder_->Run(&more, 1) != 0) {
      (void)Refuse(Cause::Fixed(kWrongSize));
      return false;
    }
    if (decoder_->Broken() || (!decoder_->AtEnd() && !decoder_->Hungry())) {
      (void)Refuse(Cause::Fixed(kDamaged));
      return false;
    }
    if (!decoder_->AtEnd() && !FeedDecoder()) {
      return false;
    }
  }
  if (decoder_->Unused() + packedLeft_ != 0) {
    (void)Refuse(Cause::Fixed(kWrongSize));
    return false;
  }
  return true;
}

}  // namespace zephin::expander
