#ifndef PLATFORM_FRAMEWORK_EXCEPTIONS_H_
#define PLATFORM_FRAMEWORK_EXCEPTIONS_H_

#include <stdexcept>

namespace zephin {

/// What the framework raises. Nothing catches it on its way but the boundary that called the
/// handler, which reports it to the user by the name of its kind and ends the run.
class FrameworkException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  /// The name of the kind, as in the report.
  const char* Kind() const { return what(); }
};

/// A nil handle was used.
class NilObjectException : public FrameworkException {
 public:
  NilObjectException() : FrameworkException("NilObjectException") {}
};

/// A list was read outside its entries.
class OutOfBoundsException : public FrameworkException {
 public:
  OutOfBoundsException() : FrameworkException("OutOfBoundsException") {}
};

/// Memory for an object of the asked size can't be had.
class OutOfMemoryException : public FrameworkException {
 public:
  OutOfMemoryException() : FrameworkException("OutOfMemoryException") {}
};

/// The unwinding of `Quit`. It is no exception of the framework and has no common base with one, so
/// that no `catch` for errors takes it.
class QuitUnwinding {
 public:
  explicit QuitUnwinding(int status) : status_(status) {}
  int Status() const { return status_; }

 private:
  int status_;
};

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_EXCEPTIONS_H_
