#include "platform/framework/machine.h"

#include <string_view>

#include "platform/framework/application.h"

namespace zephin::System {

bool Gestalt(const char* selector, std::int64_t& value) {
  const Machine& machine = Application::Current().Facts();
  const std::string_view name = selector;
  std::optional<std::int64_t> answer;
  if (name == "ramm") {
    answer = machine.memory;
  } else if (name == "sys1") {
    answer = machine.systemMajor;
  } else if (name == "sys2") {
    answer = machine.systemMinor;
  }
  value = answer.value_or(value);
  return answer.has_value();
}

}  // namespace zephin::System
