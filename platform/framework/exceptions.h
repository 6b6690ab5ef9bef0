#ifndef PLATFORM_FRAMEWORK_EXCEPTIONS_H_
#define PLATFORM_FRAMEWORK_EXCEPTIONS_H_

#include <stdexcept>

namespace zephin {

/// Base of the framework's exceptions. They are programming errors and out-of-memory conditions,
/// not expected failures. `Application::CallHandler` catches them, shows the user their kind and
/// ends the run.
class FrameworkException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  /// The name that the report shows.
  const char* Kind() const { return what(); }
};

/// A nil handle was used.
class NilObjectException : public FrameworkException {
 public:
  NilObjectException() : FrameworkException("NilObjectException") {}
};

/// An index outside of an Array was read.
class OutOfBoundsException : public FrameworkException {
 public:
  OutOfBoundsException() : FrameworkException("OutOfBoundsException") {}
};

/// There is not enough memory for an object of the requested size.
class OutOfMemoryException : public FrameworkException {
 public:
  OutOfMemoryException() : FrameworkException("OutOfMemoryException") {}
};

/// Unwinds the stack for `Quit`. It has no base class, so that no `catch` for errors, not even one
/// for std::exception, catches it.
class QuitUnwinding {
 public:
  explicit QuitUnwinding(int status) : status_(status) {}
  /// The exit status of the process.
  int Status() const { return status_; }

 private:
  int status_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_EXCEPTIONS_H_
