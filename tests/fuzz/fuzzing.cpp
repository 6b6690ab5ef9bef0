#include "tests/fuzz/fuzzing.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  zephin::test::TryInput({reinterpret_cast<const char*>(bytes), size});
  return 0;
}
