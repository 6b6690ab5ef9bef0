#include "platform/expander/folder_watch.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string>

namespace zephin::expander {
namespace {

// A tree with more folders is watched in part.
constexpr std::size_t kMostWatches = 4096;

// Silence after which a deletion counts as over, in milliseconds. An installer looks again a second
// after its own deletion.
constexpr int kSilence = 250;

}  // namespace

FolderWatch::FolderWatch(Site& site)
    : site_(site),
      events_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
      end_(::eventfd(0, EFD_CLOEXEC)) {
  if (events_.Open() && end_.Open()) {
    Watch(site.root.descriptor, IN_DELETE | IN_MOVE_SELF);
    thread_ = std::thread([this] { Run(); });
  }
}

FolderWatch::~FolderWatch() {
  End();
}

void FolderWatch::End() {
  if (thread_.joinable()) {
    (void)::eventfd_write(end_.Get(), 1);
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
      Watch(folder, IN_DELETE);
    }
  }
}

void FolderWatch::Watch(int folder, std::uint32_t events) {
  const std::string path = "/proc/self/fd/" + std::to_string(folder);
  (void)::inotify_add_watch(events_.Get(), path.c_str(), events | IN_ONLYDIR);
}

void FolderWatch::Run() {
  while (!site_.control.Stopped() && Await(-1)) {
    ReadEvents();
    if (!rootMoved_ && deletions_ <= site_.control.removed.load()) {
      continue;
    }
    site_.control.Hold();
    while (Await(kSilence)) {
      ReadEvents();
    }
    Judge();
    site_.control.Resume();
  }
}

bool FolderWatch::Await(int milliseconds) {
  std::array<pollfd, 2> polled = {pollfd{events_.Get(), POLLIN, 0}, pollfd{end_.Get(), POLLIN, 0}};
  int ready = 0;
  do {
    ready = ::poll(polled.data(), polled.size(), milliseconds);
  } while (ready < 0 && errno == EINTR);
  return ready > 0 && polled[1].revents == 0;
}

void FolderWatch::ReadEvents() {
  alignas(inotify_event) std::array<char, 16384> buffer{};
  const ssize_t size = ::read(events_.Get(), buffer.data(), buffer.size());
  for (ssize_t offset = 0; offset < size;) {
    inotify_event event{};
    std::memcpy(&event, buffer.data() + offset, sizeof event);
    offset += static_cast<ssize_t>(sizeof event + event.len);
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
      deletions_ = std::numeric_limits<std::uint64_t>::max();
    } else if ((event.mask & IN_MOVE_SELF) != 0) {
      rootMoved_ = true;
    } else if ((event.mask & IN_DELETE) != 0 && deletions_ + 1 != 0) {
      ++deletions_;
    }
  }
}

// A single file that someone deletes is that person's affair; when most of the tree has gone, the
// rest is what was made between the other side's look into a folder and its deletion of it.
void FolderWatch::Judge() {
  struct stat root {};
  const bool gone = ::fstat(site_.root.descriptor, &root) == 0 && root.st_nlink == 0;
  const std::uint64_t foreign = deletions_ - std::min(deletions_, site_.control.removed.load());
  swept_ = !gone && foreign > 0 && foreign >= site_.control.made.load() / 2;
  if (gone || swept_ || rootMoved_) {
    site_.control.Stop();
  }
}

}  // namespace zephin::expander
