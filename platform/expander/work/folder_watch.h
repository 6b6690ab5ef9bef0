// Notices that a tree which is being made is taken away at the same time, by the user or by an
// installer that starts over: holds the work while things vanish, so that the other side comes to
// its end, and then says whether there is anything left to go on with.
#ifndef PLATFORM_EXPANDER_WORK_FOLDER_WATCH_H_
#define PLATFORM_EXPANDER_WORK_FOLDER_WATCH_H_

#include <cstdint>
#include <mutex>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <unordered_set>

#include "platform/expander/common/resources.h"
#include "platform/expander/work/expansion.h"

namespace zephin::expander {

/// Works through a thread of its own from construction to destruction. Where the system can't watch
/// folders it does nothing; a root folder that is gone is still noticed by the work itself.
class FolderWatch {
 public:
  explicit FolderWatch(Site& site);
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;
  ~FolderWatch();

  /// Watches the folders that the plan made in the root too.
  void AddMadeFolders();

  /// After the work was stopped: most of what had been made was deleted, as if the whole was to go.
  /// The answer is final once End was called.
  bool Swept() const { return swept_; }
  void End();

 private:
  void Watch(std::uint32_t folder, int descriptor, std::uint32_t events);
  void Run();
  /// Waits for events or the end, at most `milliseconds` (-1: for ever). False at the end and after
  /// silence.
  bool Await(int milliseconds);
  /// Takes what the system has told; true if something of the archive was deleted.
  bool ReadEvents();
  bool OfTheArchive(int watch, const char* name);
  /// Waits until nothing more is deleted, for some seconds at the most.
  void AwaitSilence();
  void Judge();
  std::uint64_t CountStanding() const;

  Site& site_;
  Descriptor events_;
  Descriptor end_;
  std::mutex mutex_;
  /// The folder in the plan for each of the system's numbers of watches.
  std::unordered_map<int, std::uint32_t> watches_;
  /// All paths of the plan, once one of them was deleted.
  std::unordered_set<std::string_view> paths_;
  /// Things of the archive that were deleted, by whomever.
  std::uint64_t deletions_ = 0;
  bool rootMoved_ = false;
  bool swept_ = false;
  std::thread thread_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_WORK_FOLDER_WATCH_H_
