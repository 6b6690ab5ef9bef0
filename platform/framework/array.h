#ifndef PLATFORM_FRAMEWORK_ARRAY_H_
#define PLATFORM_FRAMEWORK_ARRAY_H_

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/framework/exceptions.h"

namespace zephin {

/// A zero-based list whose look-up is checked: reading outside it raises OutOfBoundsException.
template <class T>
class Array {
 public:
  Array() = default;
  explicit Array(std::vector<T> entries) : entries_(std::move(entries)) {}

  std::int64_t Count() const { return static_cast<std::int64_t>(entries_.size()); }
  /// Index of the last entry; -1 for an empty list.
  void Append(T entry) { entries_.push_back(std::move(entry)); }

  const T& operator()(std::int64_t index) const {
    if (index < 0 || index >= Count()) {
      throw OutOfBoundsException();
    }
    return entries_[static_cast<std::size_t>(index)];
  }

  auto begin() const { return entries_.begin(); }
  auto end() const { return entries_.end(); }

 private:
  std::vector<T> entries_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_ARRAY_H_
