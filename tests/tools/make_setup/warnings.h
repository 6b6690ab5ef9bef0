#ifndef TESTS_TOOLS_MAKE_SETUP_WARNINGS_H_
#define TESTS_TOOLS_MAKE_SETUP_WARNINGS_H_

#include <string>
#include <vector>

#include "tools/make_setup/bundle.h"

namespace zephin::make_setup {

/// Keeps the warnings of a run.
class Warnings : public Observer {
 public:
  void Warn(const std::string& warning) override { list.push_back(warning); }
  void BeginPacking(const Contents& /*all*/) override {}
  void Packed(const Contents& /*more*/) override {}

  std::vector<std::string> list;
};

}  // namespace zephin::make_setup

#endif  // TESTS_TOOLS_MAKE_SETUP_WARNINGS_H_
