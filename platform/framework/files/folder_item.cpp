#include "platform/framework/folder_item.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/framework/application.h"
#include "platform/framework/files/path_bytes.h"
#include "platform/framework/files/system_calls.h"

namespace zephin {
namespace {

/// What stands at the path, or at the end of the link there. False: nothing.
bool StateOf(const char* path, struct stat& state) {
  return stat(path, &state) == 0;
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
  // Between single quotes only the quote itself has a meaning.
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

}  // namespace zephin
