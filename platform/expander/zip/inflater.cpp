#include "platform/expander/zip/inflater.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <libdeflate.h>

#include <new>

namespace zephin::expander {

void Inflater::FreeDecompressor::operator()(libdeflate_decompressor* decompressor) const {
  libdeflate_free_decompressor(decompressor);
}

Inflater::Inflater()
    : whole_(libdeflate_alloc_decompressor()), stream_(std::make_unique<inflate_state>()) {
  if (!whole_) {
    throw std::bad_alloc();
  }
}

Inflater::~Inflater() = default;

bool Inflater::Whole(std::string_view packed, char* target, std::size_t size) {
  // This library is the faster one for data that are in memory as a whole; it can't do blocks.
  std::size_t taken = 0;
  std::size_t given = 0;
  return libdeflate_deflate_decompress_ex(whole_.get(), packed.data(), packed.size(), target, size,
                                          &taken, &given) == LIBDEFLATE_SUCCESS &&
         taken == packed.size() && given == size;
}

void Inflater::Begin() {
  isal_inflate_init(stream_.get());
  stream_->avail_in = 0;
  broken_ = false;
}

void Inflater::Feed(std::string_view packed) {
  // The library's field is not const, but it only reads through it.
  stream_->next_in = reinterpret_cast<std::uint8_t*>(const_cast<char*>(packed.data()));
  stream_->avail_in = static_cast<std::uint32_t>(packed.size());
}

bool Inflater::Hungry() const {
  return stream_->avail_in == 0 && !AtEnd() && !broken_;
}

std::size_t Inflater::Run(char* target, std::size_t size) {
  stream_->next_out = reinterpret_cast<std::uint8_t*>(target);
  stream_->avail_out = static_cast<std::uint32_t>(size);
  const int code = isal_inflate(stream_.get());
  // The library may forget an error in its next call.
  broken_ = broken_ || code != ISAL_DECOMP_OK;
  return size - stream_->avail_out;
}

bool Inflater::AtEnd() const {
  return stream_->block_state == ISAL_BLOCK_FINISH;
}

std::size_t Inflater::Unused() const {
  // The library reads whole bytes into its bit buffer in advance.
  const auto buffered = static_cast<std::size_t>(stream_->read_in_length) / 8;
  return stream_->avail_in + buffered;
}

std::uint32_t Crc32(std::uint32_t crc, const char* bytes, std::size_t size) {
  return crc32_gzip_refl(crc, reinterpret_cast<const unsigned char*>(bytes), size);
}

}  // namespace zephin::expander
