#include "platform/expander/work/folder_watch.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <string>

namespace zephin::expander {
namespace {

/// A tree with more folders is watched in part.
constexpr std::size_t kMostWatches = 4096;

/// Silence after which a deletion counts as over, in milliseconds. An installer looks again a
/// second after its own deletion.
constexpr int kSilence = 250;

/// How long the work is held at the most before a look at what is left.
constexpr std::chrono::seconds kLongestHold{5};

}  // namespace

FolderWatch::FolderWatch(Site& site)
    : site_(site),
      events_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
      end_(::eventfd(0, EFD_CLOEXEC)) {
  if (events_.IsOpen() && end_.IsOpen()) {
    Watch(site.root.folder, site.root.descriptor, IN_DELETE | IN_MOVE_SELF);
    thread_ = std::thread([this] { Run(); });
  }
}

FolderWatch::~FolderWatch() {
  End();
}

void FolderWatch::End() {
  if (thread_.joinable()) {
    (void)::eventfd_write(end_.Number(), 1);
    thread_.join();
  }
}

void FolderWatch::AddMadeFolders() {
  if (!thread_.joinable()) {
    return;
  }
  FolderDescriptors descriptors(site_.plan.folders, site_.root);
  const std::size_t count = std::min(site_.plan.folders.size(), kMostWatches);
  for (std::uint32_t i = 1; i < count && site_.control.Proceed(); ++i) {
    if (i == site_.root.folder || site_.plan.folders[i].code != 0) {
      continue;
    }
    if (const int folder = descriptors.Get(i); folder >= 0) {
      Watch(i, folder, IN_DELETE);
    }
  }
}

void FolderWatch::Watch(std::uint32_t folder, int descriptor, std::uint32_t events) {
  const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
  const std::lock_guard<std::mutex> lock(mutex_);
  const int watch = ::inotify_add_watch(events_.Number(), path.c_str(), events | IN_ONLYDIR);
  if (watch >= 0) {
    watches_[watch] = folder;
  }
}

void FolderWatch::Run() {
  while (!site_.control.Stopped() && Await(-1)) {
    (void)ReadEvents();
    if (!rootMoved_ && deletions_ <= site_.control.removed.load()) {
      continue;
    }
    site_.control.Hold();
    AwaitSilence();
    Judge();
    site_.control.Resume();
    // What has been looked into counts no more.
    deletions_ = site_.control.removed.load();
  }
}

void FolderWatch::AwaitSilence() {
  const auto latest = std::chrono::steady_clock::now() + kLongestHold;
  auto silentAt = std::chrono::steady_clock::now() + std::chrono::milliseconds(kSilence);
  while (Await(kSilence) && std::chrono::steady_clock::now() < std::min(silentAt, latest)) {
    if (ReadEvents()) {
      silentAt = std::chrono::steady_clock::now() + std::chrono::milliseconds(kSilence);
    }
  }
}

bool FolderWatch::Await(int milliseconds) {
  std::array<pollfd, 2> polled = {pollfd{events_.Number(), POLLIN, 0},
                                  pollfd{end_.Number(), POLLIN, 0}};
  int ready = 0;
  do {
    ready = ::poll(polled.data(), polled.size(), milliseconds);
  } while (ready < 0 && errno == EINTR);
  return ready > 0 && polled[1].revents == 0;
}

bool FolderWatch::ReadEvents() {
  alignas(inotify_event) std::array<char, 16384> buffer{};
  const ssize_t size = ::read(events_.Number(), buffer.data(), buffer.size());
  bool deleted = false;
  for (ssize_t offset = 0; offset < size;) {
    inotify_event event{};
    std::memcpy(&event, buffer.data() + offset, sizeof event);
    const char* name = buffer.data() + offset + sizeof event;
    offset += static_cast<ssize_t>(sizeof event + event.len);
    rootMoved_ = rootMoved_ || (event.mask & IN_MOVE_SELF) != 0;
    // More than the system could keep in mind: as good as a deletion.
    if ((event.mask & IN_Q_OVERFLOW) != 0 ||
        ((event.mask & IN_DELETE) != 0 && event.len > 0 && OfTheArchive(event.wd, name))) {
      ++deletions_;
      deleted = true;
    }
  }
  return deleted;
}

/// A program that was installed may make and delete files of its own beside those of the archive.
bool FolderWatch::OfTheArchive(int watch, const char* name) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = watches_.find(watch);
  if (found == watches_.end()) {
    return false;
  }
  if (paths_.empty()) {
    for (const Folder& folder : site_.plan.folders) {
      paths_.insert(folder.path);
    }
    for (const auto* list : {&site_.plan.files, &site_.plan.links}) {
      for (const Entry& entry : *list) {
        paths_.insert(entry.path);
      }
    }
  }
  std::string path(site_.plan.folders[found->second].path);
  path += path.empty() ? "" : "/";
  path += name;
  return paths_.contains(path);
}

/// A single file that someone deletes is that person's affair; when most of the tree has gone, the
/// rest is what was made between the other side's look into a folder and its deletion of it.
void FolderWatch::Judge() {
  struct stat root {};
  const bool gone = ::fstat(site_.root.descriptor, &root) == 0 && root.st_nlink == 0;
  const std::uint64_t made = site_.control.made.load() - site_.control.removed.load();
  swept_ = !gone && CountStanding() <= made / 2;
  if (gone || swept_ || rootMoved_) {
    site_.control.Stop();
  }
}

std::uint64_t FolderWatch::CountStanding() const {
  const std::string_view root = site_.plan.folders[site_.root.folder].path;
  const std::size_t skipped = root.empty() ? 0 : root.size() + 1;
  std::uint64_t count = 0;
  const auto look = [&](std::string_view path) {
    struct stat status {};
    if (path.size() > skipped &&
        ::fstatat(site_.root.descriptor, std::string(path.substr(skipped)).c_str(), &status,
                  AT_SYMLINK_NOFOLLOW) == 0) {
      ++count;
    }
  };
  for (const Folder& folder : site_.plan.folders) {
    look(folder.path);
  }
  for (const auto* list : {&site_.plan.files, &site_.plan.links}) {
    for (const Entry& entry : *list) {
      look(entry.path);
    }
  }
  return count;
}

}  // namespace zephin::expander
