// Runs copy lists of any bytes on a simulated disk. Finds items that are deleted or copied although
// their entry does not name them, at the wrong time, or over an existing item.
#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "files/files.h"
#include "files/folders.h"
#include "platform/framework/text.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"

namespace zephin {
namespace {

/// A path that has been deleted, or the two of a copy.
using Act = std::pair<String, String>;

std::vector<Act> gActs;

/// The kind of the item at a path depends on its letters: 0 is a folder, 1 a file, 2 nothing. Empty
/// and relative paths have no item.
unsigned KindOf(const String& path) {
  return path.View().starts_with('/') ? std::hash<std::string_view>()(path.View()) % 3 : 2;
}

}  // namespace

// These replace the real functions, since the inputs may name any path of the machine.
namespace ViewConst {

bool FileExists(const String& path) {
  return KindOf(path) < 2;
}

bool DirectoryExists(const String& path) {
  return KindOf(path) == 0;
}

Ref<FolderItem> GetApplicationFolder() {
  return nullptr;
}

String GetApplicationFolderPath() {
  return "/Applications/";
}

void DeleteFile(const String& path) {
  gActs.emplace_back(path, "");
}

bool RenameFile(const String& /*oldPath*/, const String& /*newPath*/) {
  std::abort();
}

bool CopyFile(const String& source, const String& destination) {
  gActs.emplace_back(source, destination);
  // The result depends on the path, too.
  return DirectoryExists(destination);
}

bool CopyFileB(const String& /*source*/, const String& /*destination*/) {
  std::abort();
}

bool CopyFolder(const String& source, const String& destination) {
  return CopyFile(source, destination);
}

void DeleteFolderOrApp(const String& path) {
  DeleteFile(path);
}

void ForceDirectories(const String& /*path*/, bool /*showErrors*/) {}

void AllUsersFullAccess(const String& /*path*/) {}

void AllUsersFullAccessOnMac(const Ref<FolderItem>& /*item*/) {}

void AllUsersFullAccessInTree(const Ref<FolderItem>& /*item*/) {}

void SetInvisible(const String& /*path*/) {}

}  // namespace ViewConst

namespace test {
namespace {

using ViewConst::FileExists;

constexpr std::string_view kTarget = "/Applications/My Folder";

/// Whether the entry contains the path, except for a prefix from the home or target folder.
bool IsNamed(std::string_view path, std::string_view entry) {
  const std::string home = BareStub().Home();
  const std::size_t added = path.starts_with(home)      ? home.size()
                            : path.starts_with(kTarget) ? kTarget.size() + 1
                                                        : 0;
  return entry.find(path.substr(std::min(added, path.size()))) != std::string_view::npos;
}

std::vector<Act> Obey(void (ZephinStubWindow::*method)(), const String& list) {
  ZephinStubWindow& w = BareStub().BareWindow();
  w.fTargetFolder = Utf8(std::string(kTarget));
  w.fPostCopy = list;
  gActs.clear();
  (w.*method)();
  return std::exchange(gActs, {});
}

void CheckEntry(const String& entry, const std::vector<Act>& acts, bool isBefore) {
  const String key = NthField(entry, "=", 1);
  const bool isOfBefore = TextEquals(key, "preinstalldelete") || TextEquals(key, "preinstallcopy");
  Require(acts.empty() || isOfBefore == isBefore);
  Require(acts.size() <= (isBefore ? 1 : 2));
  // Braces protect existing items.
  Require(acts.size() < 2 || !NthField(entry, "=", 2).View().starts_with('{'));
  for (const auto& [path, destination] : acts) {
    Require(IsNamed(path.View(), entry.View()) && IsNamed(destination.View(), entry.View()));
    Require(FileExists(path));
    // An existing destination must have been deleted first.
    Require(!FileExists(destination) || (acts.size() == 2 && acts[0] == Act{destination, ""}));
  }
}

}  // namespace

void TryInput(std::string_view input) {
  const String list = Utf8(std::string(input));
  for (const auto method :
       {&ZephinStubWindow::PreInstallCopy, &ZephinStubWindow::PostInstallCopy}) {
    std::vector<Act> acts;
    for (const String& entry : Split(list, "|")) {
      const std::vector<Act> more = Obey(method, entry);
      CheckEntry(entry, more, method == &ZephinStubWindow::PreInstallCopy);
      acts.insert(acts.end(), more.begin(), more.end());
    }
    Require(Obey(method, list) == acts);
  }
}

}  // namespace test
}  // namespace zephin
