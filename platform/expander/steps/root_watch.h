// Notices that the root folder of an expansion is moved, deleted, or being deleted by someone else,
// and stops the work then.
//
// A deletion of the whole tree that runs at the same time fails if the expansion makes files in a
// folder that the deletion has already listed. To notice it, the watch makes an empty marker file
// in the root: someone who deletes files of the tree has no reason to delete the marker, but
// someone who deletes the whole tree does. The marker is hidden, and is deleted at the end.
#ifndef PLATFORM_EXPANDER_STEPS_ROOT_WATCH_H_
#define PLATFORM_EXPANDER_STEPS_ROOT_WATCH_H_

#include <cstdint>
#include <string>
#include <thread>

#include "platform/expander/common/resources.h"
#include "platform/expander/steps/threads.h"

namespace zephin::expander {

enum class RootState : std::uint8_t {
  Unchanged,
  Moved,     ///< Its name is gone, or is that of another folder.
  Vanishing  ///< The marker was deleted; so is the root, or soon will be.
};

/// Watches with a thread of its own. Where the system can't watch folders, a change is only noticed
/// by End.
class RootWatch {
 public:
  /// `root` is an open descriptor of the folder `name` in the folder `parent`. Both stay open
  /// longer than this object. Stops `control` as soon as the root has changed, also if it did so
  /// before.
  RootWatch(int parent, std::string name, int root, WorkControl& control);
  RootWatch(const RootWatch&) = delete;
  RootWatch& operator=(const RootWatch&) = delete;
  ~RootWatch();

  /// Ends the thread, deletes the marker and returns what has become of the root; if it has
  /// changed, `control` is stopped. May be called again, with the same result.
  RootState End();

 private:
  void Run();
  RootState Look() const;
  void RemoveMarker() const;

  int parent_;
  std::string name_;
  int root_;
  WorkControl& control_;
  /// The marker file; not open if it could not be made.
  Descriptor marker_;
  Descriptor events_;
  Descriptor end_;
  RootState state_ = RootState::Unchanged;
  bool ended_ = false;
  std::thread thread_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_STEPS_ROOT_WATCH_H_
