#include "platform/expander/work/work_control.h"

namespace zephin::expander {

bool WorkControl::Proceed() {
  State state = state_.load();
  while (state == State::Held) {
    state_.wait(State::Held);
    state = state_.load();
  }
  return state == State::Running;
}

void WorkControl::Hold() {
  Change(State::Running, State::Held);
}

void WorkControl::Resume() {
  Change(State::Held, State::Running);
}

void WorkControl::Stop() {
  state_.store(State::Stopped);
  state_.notify_all();
}

void WorkControl::Change(State from, State to) {
  (void)state_.compare_exchange_strong(from, to);
  state_.notify_all();
}

}  // namespace zephin::expander
