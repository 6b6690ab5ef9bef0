#ifndef TESTS_FUZZ_FUZZING_H_
#define TESTS_FUZZ_FUZZING_H_

#include <cstdlib>
#include <string_view>

/// What all fuzzers share: how they are given their inputs, and how they tell a finding.
namespace zephin::test {

/// Each fuzzer defines it.
void TryInput(std::string_view input);

/// A condition that doesn't hold is a finding.
inline void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

}  // namespace zephin::test

#endif  // TESTS_FUZZ_FUZZING_H_
