#include "tools/make_setup/payload.h"

#include <algorithm>
#include <fstream>
#include <functional>

#include "setup/bundle_files.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlockSize = 1 << 18;
/// Of no use to a publisher, and a folder of its own on the disk.
constexpr std::uint64_t kMostPieces = 1000;

/// Reads `size` bytes from a stream. Calls `take` with each block.
void ForEachBlock(std::istream& from, std::uint64_t size,
                  const std::function<void(std::span<const char>)>& take) {
  std::vector<char> block(kBlockSize);
  for (std::uint64_t done = 0; done < size;) {
    const std::size_t count = std::min<std::uint64_t>(size - done, block.size());
    if (!from.read(block.data(), static_cast<std::streamsize>(count))) {
      throw SetupError("the archive can't be read again");
    }
    take({block.data(), count});
    done += count;
  }
}

}  // namespace

void WritePayload(const fs::path& folder, const std::string& topName, const fs::path& payload,
                  Compression compression, const PackReport& report) {
  ZipFolder(folder, payload,
            {.topName = topName,
             .form = ZipForm::Scrambled,
             .compression = compression,
             .report = report});
}

void CutIntoPieces(const fs::path& payload, std::uint64_t size, const fs::path& resources,
                   const fs::path& beside) {
  // One piece alone would be read as a payload that is not cut, which has another name.
  const std::uint64_t whole = fs::file_size(payload);
  if (size == 0 || whole <= size || (whole - 1) / size >= kMostPieces) {
    throw SetupError("must cut the payload of " + std::to_string(whole) + " bytes into 2 to " +
                     std::to_string(kMostPieces) + " pieces");
  }
  std::ifstream from(payload, std::ios::binary);
  std::uint64_t done = 0;
  for (int number = 1; done < whole; ++number) {
    const std::uint64_t count = std::min(size, whole - done);
    // The installer knows by this name that no disc follows.
    const bool last = done + count == whole;
    const std::string name = last ? kLastPieceFile : kPieceStem + std::to_string(number);
    FileWriter piece((number == 1 ? resources : beside) / name);
    ForEachBlock(from, count, [&](std::span<const char> block) { piece.Write(block); });
    piece.Close();
    done += count;
  }
  fs::remove(payload);
}

bool IsPieceName(const std::string& name) {
  // "Data#x" is a file of the publisher, to be left alone.
  const std::string stem = kPieceStem;
  return name == kLastPieceFile ||
         (name.starts_with(stem) && name.size() > stem.size() &&
          name.find_first_not_of("0123456789", stem.size()) == std::string::npos);
}

}  // namespace zephin::make_setup
