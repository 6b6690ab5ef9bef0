#include "platform/expander/common/faults.h"

#include <system_error>

#include "platform/expander/common/text.h"
#include "platform/expander/report/report.h"

namespace zephin::expander {

static_assert(Faults::kWholeArchive == Report::kWholeArchive);

std::string Cause::Text() const {
  std::string text = text_ == nullptr ? "" : text_;
  if (code_ != 0) {
    text += text.empty() ? "" : ": ";
    text += std::generic_category().message(code_);
  }
  return text;
}

void Faults::Count(std::uint32_t order, std::string_view name, std::string_view why) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (count_ == 0 || order < firstOrder_) {
    firstOrder_ = order;
    first_ = OneLine(name) + ": " + std::string(why);
  }
  ++count_;
}

void Faults::Add(std::uint32_t order, std::string_view name, std::string_view why, Reason reason) {
  Count(order, name, why);
  if (report_ != nullptr) {
    report_->AddFault(order, reason, name, why);
  }
}

void Faults::Add(std::uint32_t order, std::string_view name, const Cause& cause) {
  if (cause.KeepsItem()) {
    Count(order, name, cause.Text());
  } else {
    Add(order, name, cause.Text(), cause.ForUser());
  }
}

std::uint64_t Faults::Count() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return count_;
}

std::string Faults::First() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return first_;
}

}  // namespace zephin::expander
