#ifndef TESTS_FUZZ_FUZZING_H_
#define TESTS_FUZZ_FUZZING_H_

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

/// What all fuzzers share: how they tell a finding, and the plainest form of a cut.
namespace zephin::test {

/// A condition that doesn't hold is a finding.
inline void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

inline std::string_view AsText(const std::uint8_t* bytes, std::size_t size) {
  return {reinterpret_cast<const char*>(bytes), size};
}

/// All fields of a text, byte for byte; the empty text has none.
inline std::vector<std::string> PlainCut(std::string_view text, std::string_view separator) {
  std::vector<std::string> fields;
  while (!text.empty()) {
    const std::size_t end = text.find(separator);
    fields.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) {
      break;
    }
    text.remove_prefix(end + separator.size());
    if (text.empty()) {
      fields.emplace_back();
    }
  }
  return fields;
}

/// The field of that index, from 0; empty where there is none.
inline std::string FieldAt(const std::vector<std::string>& fields, std::size_t index) {
  return index < fields.size() ? fields[index] : std::string();
}

}  // namespace zephin::test

#endif  // TESTS_FUZZ_FUZZING_H_
