#ifndef TESTS_FUZZ_FUZZING_H_
#define TESTS_FUZZ_FUZZING_H_

#include <cstdlib>
#include <string_view>

/// Shared by all fuzzers: how they receive inputs and how they report a finding.
namespace zephin::test {

/// Each fuzzer defines it.
void TryInput(std::string_view input);

/// A false condition is a finding.
inline void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

}  // namespace zephin::test

#endif  // TESTS_FUZZ_FUZZING_H_
