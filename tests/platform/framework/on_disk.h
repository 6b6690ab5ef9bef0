#ifndef TESTS_PLATFORM_FRAMEWORK_ON_DISK_H_
#define TESTS_PLATFORM_FRAMEWORK_ON_DISK_H_

#include <gtest/gtest.h>

#include "platform/framework/application.h"
#include "platform/framework/folder_item.h"
#include "tests/support/limits.h"
#include "tests/support/quiet_desktop.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {

/// A test with real files in a scratch folder, and an application without a user.
class OnDisk : public testing::Test {
 protected:
  Ref<FolderItem> At(const std::string& name) const { return GetFolderItem(Utf8(base / name), 1); }
  unsigned Rights(const std::filesystem::path& name) const {
    return static_cast<unsigned>(std::filesystem::symlink_status(base / name).permissions());
  }
  void SetRights(const std::filesystem::path& name, unsigned rights) const {
    std::filesystem::permissions(base / name, std::filesystem::perms(rights));
  }

  const ScratchFolder scratch;
  const std::filesystem::path& base = scratch.Path();
  QuietDesktop desktop;
  Application application{desktop, Machine()};
};

}  // namespace zephin::test

#endif  // TESTS_PLATFORM_FRAMEWORK_ON_DISK_H_
