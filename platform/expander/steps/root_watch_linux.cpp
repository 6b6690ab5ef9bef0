#include "platform/expander/steps/root_watch.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <utility>

#include "platform/expander/common/file_id.h"

namespace zephin::expander {
namespace {

// Among the hidden names of a folder it comes last, and so is the first that a deletion takes that
// goes through the sorted list backwards.
constexpr const char* kMarker = ".~zephin-expanding";

}  // namespace

RootWatch::RootWatch(int parent, std::string name, int root, WorkControl& control)
    : parent_(parent),
      name_(std::move(name)),
      root_(root),
      control_(control),
      marker_(::openat(root, kMarker, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600)),
      events_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
      end_(::eventfd(0, EFD_CLOEXEC)) {
  // By the descriptor, not by the name: the name may already be that of another folder.
  const std::string path = "/proc/self/fd/" + std::to_string(root);
  if (events_.IsOpen() && end_.IsOpen() &&
      ::inotify_add_watch(events_.Number(), path.c_str(), IN_DELETE | IN_MOVE_SELF | IN_ONLYDIR) >=
          0) {
    thread_ = std::thread([this] { Run(); });
  }
}

RootWatch::~RootWatch() {
  (void)End();
}

RootState RootWatch::End() {
  if (ended_) {
    return state_;
  }
  ended_ = true;
  if (thread_.joinable()) {
    (void)::eventfd_write(end_.Number(), 1);
    thread_.join();
  }
  // The thread may not have come to a last event.
  state_ = Look();
  if (state_ != RootState::Unchanged) {
    control_.Stop();
  }
  RemoveMarker();
  return state_;
}

void RootWatch::RemoveMarker() const {
  const FileId own = FileId::Of(marker_.Number());
  RemoveIfSame(root_, kMarker, own, 0);
  // A program that moves the folder's items elsewhere while they arrive takes the marker along.
  std::array<char, PATH_MAX> place{};
  const std::string link = "/proc/self/fd/" + std::to_string(marker_.Number());
  if (::readlink(link.c_str(), place.data(), place.size() - 1) > 0) {
    RemoveIfSame(AT_FDCWD, place.data(), own, 0);
  }
}

void RootWatch::Run() try {
  // The first look finds changes that were made before the watch existed. The events only say when
  // to look again: the system drops some if there are too many.
  std::array<char, 4096> ignored{};
  while (Look() == RootState::Unchanged) {
    std::array<pollfd, 2> polled = {pollfd{events_.Number(), POLLIN, 0},
                                    pollfd{end_.Number(), POLLIN, 0}};
    if (::poll(polled.data(), polled.size(), -1) < 0 && errno != EINTR) {
      return;
    }
    if (polled[1].revents != 0) {
      return;
    }
    (void)!::read(events_.Number(), ignored.data(), ignored.size());
  }
  control_.Stop();
} catch (...) {
  // Without the thread a change is noticed by End.
}

RootState RootWatch::Look() const {
  struct stat status {};
  for (const int descriptor : {marker_.Number(), root_}) {
    if (::fstat(descriptor, &status) == 0 && status.st_nlink == 0) {
      return RootState::Vanishing;
    }
  }
  return FileId::At(parent_, name_.c_str()) == FileId::Of(root_) ? RootState::Unchanged
                                                                 : RootState::Moved;
}

}  // namespace zephin::expander
