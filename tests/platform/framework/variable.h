#ifndef TESTS_PLATFORM_FRAMEWORK_VARIABLE_H_
#define TESTS_PLATFORM_FRAMEWORK_VARIABLE_H_

#include <cstdlib>
#include <string>

namespace zephin::test {

/// Sets an environment variable during a test.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_(name) {
    before_ = std::getenv(name) == nullptr ? "" : std::getenv(name);
    setenv(name, value.c_str(), 1);
  }
  ~Variable() { before_.empty() ? unsetenv(name_) : setenv(name_, before_.c_str(), 1); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
  std::string before_;
};

}  // namespace zephin::test

#endif  // TESTS_PLATFORM_FRAMEWORK_VARIABLE_H_
