// Names the cases of a table test after their rows.
#ifndef TESTS_PLATFORM_EXPANDER_ROW_NAME_H_
#define TESTS_PLATFORM_EXPANDER_ROW_NAME_H_

#include <gtest/gtest.h>

#include <string>

namespace zephin::expander::test {

struct RowName {
  template <typename Row>
  std::string operator()(const testing::TestParamInfo<Row>& row) const {
    return row.param.name;
  }
};

}  // namespace zephin::expander::test

#endif  // TESTS_PLATFORM_EXPANDER_ROW_NAME_H_
