#include "tools/make_setup/packed_pieces.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>
#include <new>
#include <string_view>

#include "tools/make_setup/setup_error.h"
#include "tools/make_setup/zstd_packer.h"

namespace zephin::make_setup {
namespace {

/// The lowest levels at which trees of text and of programs are not longer than by "zip -9". Text
/// would gain less than 1 % by the next level, which takes a quarter more time.
constexpr int kTextLevel = 5;
constexpr int kBinaryLevel = 6;
/// More threads would be waiting for the disk.
constexpr unsigned kMostThreads = 8;
/// How far the threads may be ahead of the caller, in bytes of content.
constexpr std::uint64_t kMostAhead = 16 * kLongestPiece;

/// Allocates the compressors; each thread has its own.
struct Compressors {
  using Pointer = std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)>;
  Pointer text{libdeflate_alloc_compressor(kTextLevel), &libdeflate_free_compressor};
  Pointer binary{libdeflate_alloc_compressor(kBinaryLevel), &libdeflate_free_compressor};
  /// Only copies, in the form of a deflate stream.
  Pointer copying{libdeflate_alloc_compressor(0), &libdeflate_free_compressor};
};

/// Positions in a deflate stream, in bits from its beginning.
struct StreamEnd {
  std::size_t lastBlock = 0;  ///< Header of the last block.
  std::size_t end = 0;        ///< Behind the last block; zero bits fill up its byte.
};

/// Looks for the last block. The compressor doesn't report where its blocks are, so this expands
/// the stream, which takes a tenth of the time of the compression.
StreamEnd FindEnd(std::string& stream) {
  z_stream expansion{};
  if (inflateInit2(&expansion, -MAX_WBITS) != Z_OK) {
    throw std::bad_alloc();
  }
  const std::unique_ptr<z_stream, decltype(&inflateEnd)> ending(&expansion, &inflateEnd);
  expansion.next_in = reinterpret_cast<Bytef*>(stream.data());
  expansion.avail_in = static_cast<uInt>(stream.size());
  std::array<Bytef, 1 << 16> content{};
  StreamEnd found;
  for (;;) {
    expansion.next_out = content.data();
    expansion.avail_out = content.size();
    const int status = inflate(&expansion, Z_BLOCK);
    if (status != Z_OK) {
      throw SetupError("the compressed form is damaged");
    }
    constexpr int kUnusedBits = 7;
    constexpr int kInLastBlock = 64;
    constexpr int kAtBlockEnd = 128;
    const std::size_t position = std::size_t{expansion.total_in} * 8 -
                                 static_cast<std::size_t>(expansion.data_type & kUnusedBits);
    if ((expansion.data_type & kAtBlockEnd) == 0) {
      continue;
    }
    if ((expansion.data_type & kInLastBlock) != 0) {
      found.end = position;
      return found;
    }
    found.lastBlock = position;
  }
}

/// Lets another stream follow: unmarks the last block and appends an empty stored one, which ends
/// at a byte's end.
void LeaveOpen(std::string& stream) {
  const StreamEnd found = FindEnd(stream);
  stream[found.lastBlock / 8] =
      static_cast<char>(stream[found.lastBlock / 8] & ~(1 << found.lastBlock % 8));
  constexpr std::size_t kStoredHeaderBits = 3;
  stream.resize((found.end + kStoredHeaderBits + 7) / 8);
  stream.append("\0\0\xFF\xFF", 4);
}

std::string ReadPiece(const Piece& piece) {
  std::ifstream stream;
  // Whole pieces are read at once, so a buffer would only copy them.
  stream.rdbuf()->pubsetbuf(nullptr, 0);
  stream.open(piece.file, std::ios::binary);
  std::string content(piece.length, '\0');
  if (!stream.seekg(static_cast<std::streamoff>(piece.position)) ||
      !stream.read(content.data(), static_cast<std::streamsize>(content.size())) ||
      (piece.last && stream.peek() != std::ifstream::traits_type::eof())) {
    throw SetupError(piece.file + ": can't be read, or changes at this moment");
  }
  return content;
}

std::string Compress(std::string_view content, libdeflate_compressor* compressor) {
  std::string stream(libdeflate_deflate_compress_bound(compressor, content.size()), '\0');
  stream.resize(libdeflate_deflate_compress(compressor, content.data(), content.size(),
                                            stream.data(), stream.size()));
  return stream;
}

bool IsText(std::string_view content) {
  constexpr std::size_t kBeginning = 1 << 12;
  return content.substr(0, kBeginning).find('\0') == std::string_view::npos;
}

/// Without it such a content would take as long as any other, for nothing.
bool IsIncompressible(std::string_view content, libdeflate_compressor* compressor) {
  constexpr std::size_t kShortest = 1 << 17;
  constexpr std::size_t kSample = 1 << 12;
  constexpr std::size_t kSamples = 16;
  if (content.size() < kShortest) {
    return false;
  }
  for (std::size_t i = 0; i < kSamples; ++i) {
    const std::string_view sample = content.substr(content.size() / kSamples * i, kSample);
    if (Compress(sample, compressor).size() < sample.size()) {
      return false;
    }
  }
  return true;
}

PackedPiece PackDeflated(const Piece& piece, const Compressors& compressors) {
  if (!compressors.text || !compressors.binary || !compressors.copying) {
    throw std::bad_alloc();
  }
  std::string content = ReadPiece(piece);
  PackedPiece packed;
  packed.crc = libdeflate_crc32(0, content.data(), content.size());
  libdeflate_compressor* const usual =
      IsText(content) ? compressors.text.get() : compressors.binary.get();
  const bool copy = IsIncompressible(content, usual);
  packed.bytes = Compress(content, copy ? compressors.copying.get() : usual);
  if (!piece.last) {
    LeaveOpen(packed.bytes);
  } else if (piece.first && packed.bytes.size() >= content.size()) {
    packed.bytes = std::move(content);
    packed.stored = true;
  }
  // The room was taken for the worst case, and many results may wait.
  packed.bytes.shrink_to_fit();
  return packed;
}

/// Whether a large file is like a picture or an archive everywhere that a look is taken.
bool IsIncompressibleFile(const std::string& file, std::uint64_t size,
                          libdeflate_compressor* compressor) {
  constexpr std::uint64_t kPlaces = 8;
  constexpr std::uint64_t kLook = kLongestPiece / 2;
  for (std::uint64_t i = 0; i < kPlaces; ++i) {
    const std::uint64_t place = (size - kLook) / (kPlaces - 1) * i;
    if (!IsIncompressible(ReadPiece({file, place, kLook, false, false}), compressor)) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::vector<Piece> PiecesOf(const std::string& file, std::uint64_t size) {
  std::vector<Piece> pieces;
  std::uint64_t position = 0;
  do {
    const std::uint64_t length = std::min(size - position, kLongestPiece);
    pieces.push_back({file, position, length, position == 0, position + length == size});
    position += length;
  } while (position < size);
  return pieces;
}

/// What each thread has of its own.
struct PackedPieces::Packers {
  const Compressors deflate{};
  ZstdPacker zstd;
  bool stored = false;  ///< Of the file that zstd is at.
};

PackedPieces::PackedPieces(std::vector<Piece> pieces, unsigned threads, Compression compression)
    : pieces_(std::move(pieces)), compression_(compression) {
  const unsigned wanted = threads == 0 ? std::thread::hardware_concurrency() : threads;
  for (unsigned i = 0; i < std::clamp(wanted, 1U, kMostThreads); ++i) {
    threads_.emplace_back([this] { Work(); });
  }
}

PackedPieces::~PackedPieces() {
  {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
  }
  room_.notify_all();
  for (std::thread& thread : threads_) {
    thread.join();
  }
}

PackedPiece PackedPieces::Next() {
  std::unique_lock lock(mutex_);
  ready_.wait(lock, [this] { return results_.contains(taken_); });
  Result result = std::move(results_.extract(taken_).mapped());
  // Otherwise no thread waits, and there are thousands of small pieces.
  const bool wasFull = ahead_ >= kMostAhead;
  ahead_ -= pieces_[taken_].length;
  ++taken_;
  lock.unlock();
  if (wasFull) {
    room_.notify_all();
  }
  if (result.error) {
    // In the caller's thread, at the place where the result belongs.
    std::rethrow_exception(result.error);
  }
  return std::move(result.piece);
}

PackedPiece PackedPieces::Pack(std::size_t index, Packers& packers) const {
  const Piece& piece = pieces_[index];
  if (compression_ == Compression::Deflate) {
    return PackDeflated(piece, packers.deflate);
  }
  std::string content = ReadPiece(piece);
  PackedPiece packed;
  packed.crc = libdeflate_crc32(0, content.data(), content.size());
  if (piece.first && piece.last) {
    packers.stored = IsIncompressible(content, packers.deflate.text.get());
    if (!packers.stored) {
      packed.bytes = packers.zstd.Pack(content);
      packers.stored = packed.bytes.size() >= content.size();
    }
  } else {
    if (piece.first) {
      std::uint64_t size = piece.length;
      for (std::size_t i = index; !pieces_[i].last; ++i) {
        size += pieces_[i + 1].length;
      }
      packers.stored = IsIncompressibleFile(piece.file, size, packers.deflate.text.get());
      packers.zstd.Begin(size);
    }
    if (!packers.stored) {
      packed.bytes = packers.zstd.Continue(content, piece.last);
    }
  }
  packed.stored = packers.stored;
  if (packed.stored) {
    packed.bytes = std::move(content);
  }
  return packed;
}

void PackedPieces::Work() {
  Packers packers;
  std::unique_lock lock(mutex_);
  while (!stopped_ && begun_ < pieces_.size()) {
    std::size_t index = begun_++;
    // A frame can't be made by two threads.
    while (compression_ == Compression::Zstd && !pieces_[begun_ - 1].last) {
      ++begun_;
    }
    for (const std::size_t end = begun_; index < end; ++index) {
      // What Next waits for is made in any case: the room may be taken by pieces behind it.
      room_.wait(lock, [&] { return stopped_ || index == taken_ || ahead_ < kMostAhead; });
      if (stopped_) {
        return;
      }
      ahead_ += pieces_[index].length;
      lock.unlock();
      Result result;
      try {
        result.piece = Pack(index, packers);
      } catch (...) {
        result.error = std::current_exception();
      }
      lock.lock();
      results_.emplace(index, std::move(result));
      if (index == taken_) {
        ready_.notify_one();
      }
    }
  }
}

}  // namespace zephin::make_setup
