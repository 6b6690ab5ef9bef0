#include "tests/support/limits.h"

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace zephin::test {
namespace fs = std::filesystem;

PlainUser::PlainUser(const fs::path& folder) : wasRoot_(geteuid() == 0) {
  if (!wasRoot_) {
    return;
  }
  constexpr uid_t kNobody = 65534;
  constexpr auto kSame = static_cast<gid_t>(-1);
  bool done = lchown(folder.c_str(), kNobody, kSame) == 0;
  for (const auto& item : fs::recursive_directory_iterator(folder)) {
    done = done && lchown(item.path().c_str(), kNobody, kSame) == 0;
  }
  // The real user too, which a shell returns to. The saved one allows to return to root.
  if (!done || setresuid(kNobody, kNobody, 0) != 0) {
    throw std::runtime_error("can't become a plain user");
  }
}

PlainUser::~PlainUser() {
  if (wasRoot_ && setresuid(0, 0, 0) != 0) {
    std::abort();
  }
}

FullDisk::FullDisk(std::size_t bytes) : signalBefore_(std::signal(SIGXFSZ, SIG_IGN)) {
  getrlimit(RLIMIT_FSIZE, &before_);
  const rlimit tight{bytes, before_.rlim_max};
  setrlimit(RLIMIT_FSIZE, &tight);
}

FullDisk::~FullDisk() {
  setrlimit(RLIMIT_FSIZE, &before_);
  std::signal(SIGXFSZ, signalBefore_);
}

}  // namespace zephin::test
