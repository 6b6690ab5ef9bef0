#ifndef TESTS_FUZZ_BARE_STUB_H_
#define TESTS_FUZZ_BARE_STUB_H_

#include <cstddef>
#include <utility>

#include "app/app.h"
#include "app/zephin_stub_window.h"
#include "dialogs/message_modal.h"
#include "platform/framework/text.h"
#include "tests/platform/framework/quiet_desktop.h"

namespace zephin::test {

/// An opened application and its main window before the start, on a desktop that shows nothing. Its
/// captions are empty. Made once, it serves any number of inputs.
template <class AnyDesktop = QuietDesktop>
class BareStub {
 public:
  explicit BareStub(Machine machine = {}) : app_(desktop, std::move(machine)) {
    // So that the place of the one window that nobody owns outlives this object.
    CloseImplicitMessageModal();
    app_.Event_Open();
    window_ = MakeWindow<UnstartedWindow>();
    window_->fLabels = Split("||||||||||||||||||||||||||", "|");
  }
  ~BareStub() { CloseImplicitMessageModal(); }
  BareStub(const BareStub&) = delete;
  BareStub& operator=(const BareStub&) = delete;

  ZephinStubWindow& Window() { return *window_; }

  AnyDesktop desktop;

 private:
  class UnstartedWindow : public ZephinStubWindow {
   public:
    void Event_Open() override {}
  };

  App app_;
  Ref<UnstartedWindow> window_;
};

}  // namespace zephin::test

#endif  // TESTS_FUZZ_BARE_STUB_H_
