#include "tests/support/limits.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <stdexcept>

namespace zephin::test {
namespace fs = std::filesystem;

namespace {

constexpr uid_t kNobody = 65534;

void Become(uid_t user, uid_t saved) {
  if (setresuid(user, user, saved) != 0) {
    throw std::runtime_error("can't change the user");
  }
  // The leak checker looks at its own process.
  prctl(PR_SET_DUMPABLE, 1);
}

void GiveAway(const fs::path& item) {
  if (lchown(item.c_str(), kNobody, static_cast<gid_t>(-1)) != 0) {
    throw std::runtime_error("can't give away " + item.string());
  }
}

}  // namespace

PlainUser::PlainUser(const fs::path& folder) : wasRoot_(geteuid() == 0) {
  if (wasRoot_) {
    GiveAway(folder);
    for (const auto& item : fs::recursive_directory_iterator(folder)) {
      GiveAway(item.path());
    }
    Become(kNobody, 0);
  }
}

PlainUser::~PlainUser() {
  if (wasRoot_) {
    Become(0, 0);
  }
}

FullDisk::FullDisk(std::size_t bytes) {
  getrlimit(RLIMIT_FSIZE, &before_);
  rlimit tight = before_;
  tight.rlim_cur = bytes;
  setrlimit(RLIMIT_FSIZE, &tight);
  // A write beyond the limit shall fail, not end the process.
  struct sigaction ignored {};
  ignored.sa_handler = SIG_IGN;
  sigaction(SIGXFSZ, &ignored, &signalBefore_);
}

FullDisk::~FullDisk() {
  setrlimit(RLIMIT_FSIZE, &before_);
  sigaction(SIGXFSZ, &signalBefore_, nullptr);
}

}  // namespace zephin::test
