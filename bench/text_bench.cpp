#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "platform/framework/text.h"

namespace zephin {
namespace {

constexpr std::size_t kSize = std::size_t{10} * 1000 * 1000;

constexpr const char* kAsciiWords = "The quick brown fox. ";
constexpr const char* kAccentedWords = "The quick brown fox. Caf\u00E9 ";

/// A record of 10 MB in fields of some length.
String Record(Encoding encoding, std::size_t fieldSize, const char* words = kAccentedWords) {
  std::string field;
  while (field.size() < fieldSize) {
    field += words;
  }
  std::string bytes;
  while (bytes.size() < kSize) {
    bytes += field + "|#|";
  }
  return {bytes, encoding};
}

void CountBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kSize));
}

/// What the C library needs to look through the same bytes: the measure for the others.
void SearchOfTheCLibrary(benchmark::State& state) {
  const String record = Record(Encoding::UTF8, 1000);
  for ([[maybe_unused]] auto pass : state) {
    benchmark::DoNotOptimize(memmem(record.View().data(), record.Size(), "$|~", 3));
  }
  CountBytes(state);
}
BENCHMARK(SearchOfTheCLibrary);

void FindNothing(benchmark::State& state, Encoding encoding, const char* needle) {
  const String record = Record(encoding, 1000);
  for ([[maybe_unused]] auto pass : state) {
    benchmark::DoNotOptimize(InStr(record, needle));
  }
  CountBytes(state);
}
BENCHMARK_CAPTURE(FindNothing, NoLetters, Encoding::UTF8, "$|~");
BENCHMARK_CAPTURE(FindNothing, Letters, Encoding::UTF8, "$HTML$");
BENCHMARK_CAPTURE(FindNothing, LettersWithFormsBeyondAscii, Encoding::UTF8, "desks");
BENCHMARK_CAPTURE(FindNothing, LettersInMacRoman, Encoding::MacRoman, "$HTML$");
BENCHMARK_CAPTURE(FindNothing, BeyondAscii, Encoding::UTF8, "\u6F22");

void CutIntoFields(benchmark::State& state, Encoding encoding, std::size_t fieldSize) {
  const String record = Record(encoding, fieldSize);
  for ([[maybe_unused]] auto pass : state) {
    benchmark::DoNotOptimize(Split(record, "|#|"));
  }
  CountBytes(state);
}
BENCHMARK_CAPTURE(CutIntoFields, Long, Encoding::UTF8, 300000);
BENCHMARK_CAPTURE(CutIntoFields, Short, Encoding::UTF8, 10);
BENCHMARK_CAPTURE(CutIntoFields, LongWithoutEncoding, Encoding::None, 300000);

void Count(benchmark::State& state, const char* words) {
  const String record = Record(Encoding::UTF8, 1000, words);
  for ([[maybe_unused]] auto pass : state) {
    benchmark::DoNotOptimize(Len(record));
  }
  CountBytes(state);
}
BENCHMARK_CAPTURE(Count, Ascii, kAsciiWords);
BENCHMARK_CAPTURE(Count, Accented, kAccentedWords);

void CompareWithItsCopy(benchmark::State& state) {
  const String record = Record(Encoding::UTF8, 1000);
  const String copy(std::string(record.View()), Encoding::UTF8);
  for ([[maybe_unused]] auto pass : state) {
    benchmark::DoNotOptimize(TextEquals(record, copy));
  }
  CountBytes(state);
}
BENCHMARK(CompareWithItsCopy);

}  // namespace
}  // namespace zephin
