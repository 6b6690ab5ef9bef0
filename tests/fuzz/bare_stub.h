#ifndef TESTS_FUZZ_BARE_STUB_H_
#define TESTS_FUZZ_BARE_STUB_H_

#include <gtest/gtest.h>

#include "dialogs/message_modal.h"
#include "tests/support/stub_run.h"

namespace zephin::test {

/// The machine for all inputs, with the program before its start-up. Its user closes every window.
inline StubRun& BareStub() {
  // First, so that the static window without an owner outlives the machine.
  CloseImplicitMessageModal();
  static StubRun run;
  // A failed expectation in the machine is a finding.
  GTEST_FLAG_SET(break_on_failure, true);
  run.desktop.AgreeToAll("/");
  run.desktop.reported.clear();
  return run;
}

}  // namespace zephin::test

#endif  // TESTS_FUZZ_BARE_STUB_H_
