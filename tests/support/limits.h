#ifndef TESTS_SUPPORT_LIMITS_H_
#define TESTS_SUPPORT_LIMITS_H_

#include <sys/resource.h>

#include <csignal>
#include <filesystem>

namespace zephin::test {

/// While it lives, this process is a user without privileges, to whom `folder` belongs with all
/// that it holds. Changes nothing if it is one already.
class PlainUser {
 public:
  explicit PlainUser(const std::filesystem::path& folder);
  ~PlainUser();

 private:
  bool wasRoot_;
};

/// While it lives, no file takes more than `bytes`: the disk seems to be full behind them.
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
