#include "platform/framework/folder_item.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/framework/application.h"
#include "platform/framework/files/system_calls.h"
#include "platform/framework/files/system_paths.h"
#include "platform/framework/random.h"
#include "platform/framework/text.h"

namespace zephin {
namespace {

/// The state of the item, or of the target of a link. False if it does not exist.
bool StateOf(const char* path, struct stat& state) {
  return stat(path, &state) == 0;
}

struct FreeText {
  void operator()(char* text) const { std::free(text); }
};

/// The target of the link at `path`; `path` itself for any other item and for a dangling link.
std::string FollowLink(const std::string& path) {
  struct stat state {};
  if (path.find('\0') != std::string::npos || lstat(path.c_str(), &state) != 0 ||
      !S_ISLNK(state.st_mode)) {
    return path;
  }
  const std::unique_ptr<char, FreeText> target(realpath(path.c_str(), nullptr));
  return target == nullptr ? path : target.get();
}

/// The folder that contains the bundle; empty if the machine does not know the executable.
std::string FolderOfBundle() {
  const std::string& executable = Application::Current().Facts().executable;
  if (executable.empty()) {
    return {};
  }
  const String path = Utf8(executable);
  const std::int64_t contents = InStr(path, "/Contents");
  return FolderOfPath(contents == 0 ? executable : Left(path, contents - 1).Bytes());
}

std::string RandomName() {
  static Random random;
  std::array<char, 32> name{};
  std::snprintf(name.data(), name.size(), "item-%016llx",
                static_cast<unsigned long long>(random.InRange(0, INT64_MAX)));
  return name.data();
}

Ref<FolderItem> ItemOf(const std::string& path) {
  return path.empty() ? nullptr : MakeRef<FolderItem>(path);
}

}  // namespace

bool FolderItem::Exists() const {
  struct stat state {};
  return lstat(SystemPath(path_), &state) == 0;
}

bool FolderItem::Directory() const {
  struct stat state {};
  return StateOf(SystemPath(path_), state) && S_ISDIR(state.st_mode);
}

bool FolderItem::IsSameAs(const FolderItem& other) const {
  struct stat own {};
  struct stat others {};
  return StateOf(SystemPath(path_), own) && StateOf(SystemPath(other.path_), others) &&
         own.st_dev == others.st_dev && own.st_ino == others.st_ino;
}

bool FolderItem::Alias() const {
  struct stat state {};
  return links_ == Links::Own && lstat(SystemPath(path_), &state) == 0 && S_ISLNK(state.st_mode);
}

std::int64_t FolderItem::Length() const {
  struct stat state {};
  return StateOf(SystemPath(path_), state) && S_ISREG(state.st_mode) ? state.st_size : 0;
}

bool FolderItem::Visible() const {
  return path_[path_.rfind('/') + 1] != '.';
}

void FolderItem::SetVisible(bool /*visible*/) {}

bool FolderItem::IsWriteable() const {
  // Asked with the effective user, which access(2) would not use.
  const int rights = Directory() ? W_OK | X_OK : W_OK;
  return faccessat(AT_FDCWD, SystemPath(path_), rights, AT_EACCESS) == 0;
}

void FolderItem::GrantAllRights() {
  struct stat state {};
  if (lstat(SystemPath(path_), &state) != 0 || S_ISLNK(state.st_mode) ||
      (state.st_mode & ACCESSPERMS) == ACCESSPERMS) {
    return;
  }
  ChangeRights(SystemPath(path_), (state.st_mode & ALLPERMS) | ACCESSPERMS);
}

String FolderItem::Name() const {
  return Utf8(path_ == "/" ? path_ : path_.substr(path_.rfind('/') + 1));
}

String FolderItem::NativePath() const {
  return Utf8(path_);
}

String FolderItem::ShellPath() const {
  // Within single quotes only the single quote itself is special to a shell.
  std::string word = "'";
  for (const char c : path_) {
    if (c == '\'') {
      word += R"('\'')";
    } else {
      word += c;
    }
  }
  return Utf8(word + "'");
}

Ref<FolderItem> FolderItem::Parent() const {
  return path_ == "/" ? nullptr : MakeRef<FolderItem>(FolderOfPath(path_));
}

void FolderItem::Delete() {
  lastErrorCode_ = std::remove(SystemPath(path_)) == 0 ? 0 : errno;
}

void FolderItem::CreateAsFolder() {
  lastErrorCode_ = mkdir(SystemPath(path_), ACCESSPERMS) == 0 ? 0 : errno;
}

void FolderItem::Launch(bool activate) const {
  Application::Current().Session().LaunchItem(*this, activate);
}

Ref<FolderItem> FolderItem::Child(const String& name, bool followAlias) const {
  if (name.IsEmpty()) {
    return nullptr;
  }
  const std::string path = WithoutTrailingSlashes(PathInFolder(path_, PathBytes(name)));
  return MakeRef<FolderItem>(followAlias ? FollowLink(path) : path);
}

std::int64_t FolderItem::Count() const {
  names_ = NamesInFolder(SystemPath(path_));
  std::stable_partition(names_.begin(), names_.end(),
                        [](const std::string& name) { return name.front() != '.'; });
  listed_ = true;
  return static_cast<std::int64_t>(names_.size());
}

Ref<FolderItem> FolderItem::Item(std::int64_t index) const {
  return Listed(index, Links::Followed);
}

Ref<FolderItem> FolderItem::TrueItem(std::int64_t index) const {
  return Listed(index, Links::Own);
}

Ref<FolderItem> FolderItem::Listed(std::int64_t index, Links links) const {
  if (!listed_) {
    Count();
  }
  if (index < 1 || index > static_cast<std::int64_t>(names_.size())) {
    return nullptr;
  }
  const std::string& name = names_[static_cast<std::size_t>(index - 1)];
  return Ref<FolderItem>(
      std::shared_ptr<FolderItem>(new FolderItem(PathInFolder(path_, name), links)));
}

Ref<FolderItem> GetFolderItem(const String& path, int mode) {
  const std::string bytes = PathBytes(path);
  if (!bytes.empty() && bytes.front() == '/') {
    return MakeRef<FolderItem>(WithoutTrailingSlashes(bytes));
  }
  const std::string folder = !bytes.empty() && mode != 0 ? std::string() : FolderOfBundle();
  if (folder.empty()) {
    return nullptr;
  }
  return MakeRef<FolderItem>(bytes.empty() ? folder
                                           : WithoutTrailingSlashes(PathInFolder(folder, bytes)));
}

Ref<FolderItem> GetTemporaryFolderItem() {
  const Ref<FolderItem> folder = SpecialFolder::Temporary();
  if (folder.IsNil()) {
    return nullptr;
  }
  Ref<FolderItem> item;
  do {
    item = folder->Child(Utf8(RandomName()), false);
  } while (item->Exists());
  return item;
}

namespace SpecialFolder {

Ref<FolderItem> System() {
  return ItemOf(Application::Current().Facts().systemFolder);
}
Ref<FolderItem> Applications() {
  constexpr mode_t kMode = 0755;
  const std::string& path = Application::Current().Facts().applicationsFolder;
  // A second call sets the mode, since the first one leaves out what the user's mask forbids.
  if (mkdir(path.c_str(), kMode) == 0) {
    ChangeRights(path.c_str(), kMode);
  }
  return ItemOf(FollowLink(path));
}
Ref<FolderItem> UserHome() {
  return ItemOf(Application::Current().Facts().userHome);
}
Ref<FolderItem> Desktop() {
  return ItemOf(Application::Current().Facts().desktopFolder);
}
Ref<FolderItem> Temporary() {
  return ItemOf(Application::Current().Facts().temporaryFolder);
}

}  // namespace SpecialFolder

}  // namespace zephin
