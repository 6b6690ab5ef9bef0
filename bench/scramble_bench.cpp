#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "platform/framework/application.h"
#include "setup/bundle_files.h"
#include "tests/support/quiet_desktop.h"

namespace zephin {
namespace {

constexpr std::size_t kSize = std::size_t{64} << 20U;
constexpr int kSlice = 10;

void CountBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kSize));
}

/// The measure for the others.
void CopyOfTheCLibrary(benchmark::State& state) {
  const std::string from(kSize, 'x');
  std::string to(kSize, '\0');
  for (auto pass : state) {
    std::memcpy(to.data(), from.data(), kSize);
    benchmark::ClobberMemory();
  }
  CountBytes(state);
}
BENCHMARK(CopyOfTheCLibrary);

void UnscrambleInPlace(benchmark::State& state) {
  std::string bytes(kSize, 'x');
  for (auto pass : state) {
    UnscrambleBytes(bytes, 0);
    benchmark::ClobberMemory();
  }
  CountBytes(state);
}
BENCHMARK(UnscrambleInPlace);

/// The record's way: a text, in blocks, with a yield after each.
void UnscrambleAText(benchmark::State& state) {
  QuietDesktop desktop;
  desktop.slice = kSlice;
  const Application application(desktop, Machine());
  String text(std::string(kSize, 'x'), Encoding::None);
  for (auto pass : state) {
    ViewConst::DecryptStr(text);
    benchmark::ClobberMemory();
  }
  CountBytes(state);
}
BENCHMARK(UnscrambleAText);

}  // namespace
}  // namespace zephin
