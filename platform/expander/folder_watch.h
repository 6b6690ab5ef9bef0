// Notices that a tree which is being made is taken away at the same time, by the user or by an
// installer that starts over: holds the work while things vanish, so that the other side comes to
// its end, and then says whether there is anything left to go on with.
#ifndef PLATFORM_EXPANDER_FOLDER_WATCH_H_
#define PLATFORM_EXPANDER_FOLDER_WATCH_H_

#include <cstdint>
#include <thread>

#include "platform/expander/descriptor.h"
#include "platform/expander/expansion.h"

namespace zephin::expander {

// Works through a thread of its own from construction to destruction. Where the system can't watch
// folders it does nothing; a root folder that is gone is still noticed by the work itself.
class FolderWatch {
 public:
  explicit FolderWatch(Site& site);
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;
  ~FolderWatch();

  // Watches the folders that the plan made in the root too.
  void AddMadeFolders();

  // After the work was stopped: most of what had been made was deleted, as if the whole was to go.
  // The answer is final once End was called.
  bool Swept() const { return swept_; }
  void End();

 private:
  void Watch(int folder, std::uint32_t events);
  void Run();
  // Waits for events or the end, at most `milliseconds` (-1: for ever). False at the end and after
  // silence.
  bool Await(int milliseconds);
  void ReadEvents();
  void Judge();

  Site& site_;
  Descriptor events_;
  Descriptor end_;
  // What was deleted by whomever, as far as the system told.
  std::uint64_t deletions_ = 0;
  bool rootMoved_ = false;
  bool swept_ = false;
  std::thread thread_;
};

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_FOLDER_WATCH_H_
