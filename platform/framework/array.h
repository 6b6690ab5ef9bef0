#ifndef PLATFORM_FRAMEWORK_ARRAY_H_
#define PLATFORM_FRAMEWORK_ARRAY_H_

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/framework/exceptions.h"

namespace zephin {

/// A list of values, indexed from 0. Reading outside of it throws OutOfBoundsException; it is never
/// extended by an assignment.
template <class T>
class Array {
 public:
  Array() = default;
  explicit Array(std::vector<T> entries) : entries_(std::move(entries)) {}

  std::int64_t Count() const { return static_cast<std::int64_t>(entries_.size()); }
  /// Adds an entry at the end.
  void Append(T entry) { entries_.push_back(std::move(entry)); }

  /// The entry at `index`, 0 to Count() - 1. The reference is valid until the next Append.
  const T& operator()(std::int64_t index) const {
    if (index < 0 || index >= Count()) {
      throw OutOfBoundsException();
    }
    return entries_[static_cast<std::size_t>(index)];
  }

  // For range-based loops.
  auto begin() const { return entries_.begin(); }
  auto end() const { return entries_.end(); }

 private:
  std::vector<T> entries_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_ARRAY_H_
