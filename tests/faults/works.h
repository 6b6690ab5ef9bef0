#ifndef TESTS_FAULTS_WORKS_H_
#define TESTS_FAULTS_WORKS_H_

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/stub_run.h"

namespace zephin::test {

/// One kind of installation that changes a disk, on its own machine. It writes into the folder
/// "Place" of the scratch folder.
struct Work {
  std::string name;
  std::function<void(StubRun&)> prepare;
  std::function<void(StubRun&, ZephinStubWindow&)> act;
  /// The calls whose failure leaves items missing without a message. Silent are the expansion of
  /// the main payload, copies before the install, files in a folder of the copy list, the placing
  /// of single items, and the unscrambling.
  std::set<std::string> silent;
};

std::filesystem::path PlaceOf(const StubRun& run);

/// All of them.
std::vector<Work> Works();

}  // namespace zephin::test

#endif  // TESTS_FAULTS_WORKS_H_
