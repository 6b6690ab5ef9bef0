#ifndef PLATFORM_FRAMEWORK_REF_H_
#define PLATFORM_FRAMEWORK_REF_H_

#include <concepts>
#include <cstddef>
#include <memory>
#include <utility>

#include "platform/framework/exceptions.h"

namespace zephin {

/// A handle on a shared object of the framework, or nil. The object is destroyed with its last
/// handle. Using a nil handle throws NilObjectException. Handles on a derived class convert to
/// handles on its base.
template <class T>
class Ref {
 public:
  /// Nil.
  Ref() = default;
  Ref(std::nullptr_t) {}
  explicit Ref(std::shared_ptr<T> object) : object_(std::move(object)) {}
  template <class U>
  requires std::convertible_to<U*, T*> Ref(const Ref<U>& other) : object_(other.Shared()) {}

  bool IsNil() const { return object_ == nullptr; }
  explicit operator bool() const { return !IsNil(); }
  T* operator->() const { return &Checked(); }
  T& operator*() const { return Checked(); }
  /// The pointer behind the handle; null for nil. Never throws.
  const std::shared_ptr<T>& Shared() const { return object_; }

  /// Whether both are handles on the same object, or both are nil.
  friend bool operator==(const Ref& a, const Ref& b) { return a.object_ == b.object_; }

 private:
  T& Checked() const {
    if (object_ == nullptr) {
      throw NilObjectException();
    }
    return *object_;
  }

  std::shared_ptr<T> object_;
};

/// A handle on a new object, made with these arguments.
template <class T, class... Args>
Ref<T> MakeRef(Args&&... args) {
  return Ref<T>(std::make_shared<T>(std::forward<Args>(args)...));
}

/// The same object as a T; nil if the handle is nil or the object is not a T.
template <class T, class U>
Ref<T> RefCast(const Ref<U>& handle) {
  return Ref<T>(std::dynamic_pointer_cast<T>(handle.Shared()));
}

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_REF_H_
