#ifndef TESTS_SUPPORT_LIMITS_H_
#define TESTS_SUPPORT_LIMITS_H_

#include <sys/resource.h>

#include <csignal>
#include <filesystem>

namespace zephin::test {

/// Makes this process an unprivileged user and the owner of `folder` and its contents, until the
/// object is destroyed. Does nothing if the process is not root.
class PlainUser {
 public:
  explicit PlainUser(const std::filesystem::path& folder);
  ~PlainUser();

 private:
  bool wasRoot_;
};

/// Limits the size of every file to `bytes`, as on a full disk, until the object is destroyed.
class FullDisk {
 public:
  explicit FullDisk(std::size_t bytes);
  ~FullDisk();

 private:
  rlimit before_{};
  sighandler_t signalBefore_;
};

}  // namespace zephin::test

#endif  // TESTS_SUPPORT_LIMITS_H_
