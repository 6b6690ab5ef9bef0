#include "platform/expander/work_control.h"

namespace zephin::expander {

bool WorkControl::Proceed() {
  State state = state_.load();
  while (state == State::kHeld) {
    state_.wait(State::kHeld);
    state = state_.load();
  }
  return state == State::kRunning;
}

void WorkControl::Hold() {
  Change(State::kRunning, State::kHeld);
}

void WorkControl::Resume() {
  Change(State::kHeld, State::kRunning);
}

void WorkControl::Stop() {
  state_.store(State::kStopped);
  state_.notify_all();
}

void WorkControl::Change(State from, State to) {
  (void)state_.compare_exchange_strong(from, to);
  state_.notify_all();
}

}  // namespace zephin::expander
