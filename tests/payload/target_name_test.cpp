#include "payload/target_name.h"

#include <gtest/gtest.h>

namespace zephin::test {
namespace {

TEST(TargetName, LeadsBelowTheParentOrNot) {
  const std::pair<const char*, bool> rows[] = {
      {"Tool", true},  {"My Tool", true}, {"a/b", true},          {".hidden", true},
      {"...", true},   {"a/../b", true},  {"/a", true},           {"", false},
      {"/", false},    {".", false},      {"./.", false},         {"..", false},
      {"a/..", false}, {"../a", false},   {"a/../../b/c", false},
  };
  for (const auto& [name, below] : rows) {
    EXPECT_EQ(LiesBelowItsParent(name), below) << name;
  }
}

}  // namespace
}  // namespace zephin::test
