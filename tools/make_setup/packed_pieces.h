#ifndef TOOLS_MAKE_SETUP_PACKED_PIECES_H_
#define TOOLS_MAKE_SETUP_PACKED_PIECES_H_

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace zephin::make_setup {

/// Part of a file, small enough to be held in memory. A file has one piece or, if it is large,
/// several in a row.
struct Piece {
  /// A plain text, since a path object takes many times the memory and there are many pieces.
  std::string file;
  std::uint64_t position = 0;  ///< In the file, in bytes, as the length.
  std::uint64_t length = 0;    ///< At most kLongestPiece; 0 only for an empty file.
  bool first = true;
  bool last = true;
};

inline constexpr std::uint64_t kLongestPiece = 1 << 20;

/// The pieces of a file of `size` bytes.
std::vector<Piece> PiecesOf(const std::string& file, std::uint64_t size);

/// How contents are compressed where that makes them shorter.
enum class Compression { Deflate, Zstd };

struct PackedPiece {
  /// Those of all pieces of a file, joined, are one deflate stream or one zstd frame, of which the
  /// part of a piece may be empty.
  std::string bytes;
  /// The file is stored as it is, since compression would not make it shorter. The same for all
  /// pieces of a file.
  bool stored = false;
  std::uint32_t crc = 0;  ///< CRC-32 of the piece's content.
};

/// Compresses pieces on several threads and gives the results in the order of the pieces. They are
/// the same for any number of threads. Memory is bounded by the number of threads, not by the
/// number of pieces.
class PackedPieces {
 public:
  /// `threads`: 0 for one on each processor. The pieces of a file must follow each other. With zstd
  /// they are compressed by one thread.
  PackedPieces(std::vector<Piece> pieces, unsigned threads,
               Compression compression = Compression::Deflate);
  /// Ends the threads, also before all pieces are compressed.
  ~PackedPieces();
  PackedPieces(const PackedPieces&) = delete;
  PackedPieces& operator=(const PackedPieces&) = delete;

  /// Waits for the next piece. Throws SetupError if its file can't be read or has another size than
  /// its pieces. Must not be called more often than there are pieces.
  PackedPiece Next();

 private:
  struct Packers;
  struct Result {
    PackedPiece piece;
    std::exception_ptr error;
  };
  void Work();
  PackedPiece Pack(std::size_t index, Packers& packers) const;

  const std::vector<Piece> pieces_;
  const Compression compression_;
  std::mutex mutex_;
  std::condition_variable ready_;          ///< The result that Next waits for is there.
  std::condition_variable room_;           ///< A thread that is too far ahead may continue.
  std::map<std::size_t, Result> results_;  ///< Of pieces from `taken_` on, by their index.
  std::size_t begun_ = 0;                  ///< Number of pieces that a thread has begun.
  std::size_t taken_ = 0;                  ///< Number of results that Next has given.
  std::uint64_t ahead_ = 0;                ///< Bytes of the pieces begun and not yet taken.
  bool stopped_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PACKED_PIECES_H_
