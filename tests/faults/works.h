#ifndef TESTS_FAULTS_WORKS_H_
#define TESTS_FAULTS_WORKS_H_

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/stub_run.h"

namespace zephin::test {

/// Something that installers do to a disk, on a machine of its own. What it makes lies in the
/// scratch folder's "Place".
struct Work {
  std::string name;
  std::function<void(StubRun&)> prepare;
  std::function<void(StubRun&, ZephinStubWindow&)> act;
  /// The calls of which one may fail, and something be missing then, without a word to the user:
  /// the expansion of the main payload gives no sign, and neither do copies before the install,
  /// files in a folder of the copy list, what is placed item by item, and the unscrambling.
  std::set<std::string> silent;
};

std::filesystem::path PlaceOf(const StubRun& run);

/// All of them.
std::vector<Work> Works();

}  // namespace zephin::test

#endif  // TESTS_FAULTS_WORKS_H_
