#ifndef TESTS_FUZZ_BARE_STUB_H_
#define TESTS_FUZZ_BARE_STUB_H_

#include <gtest/gtest.h>

#include "dialogs/message_modal.h"
#include "tests/support/stub_run.h"

namespace zephin::test {

/// The one machine for all inputs, on which the program stands before its start. Its user closes
/// whatever comes up.
inline StubRun& BareStub() {
  // First, so that the place of the one window that nobody owns outlives the machine.
  CloseImplicitMessageModal();
  static StubRun run;
  // What the machine takes for a failed test is a finding.
  GTEST_FLAG_SET(break_on_failure, true);
  run.desktop.AgreeToAll("/");
  run.desktop.told.clear();
  return run;
}

}  // namespace zephin::test

#endif  // TESTS_FUZZ_BARE_STUB_H_
