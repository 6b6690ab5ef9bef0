#ifndef TESTS_SUPPORT_STUB_RUN_H_
#define TESTS_SUPPORT_STUB_RUN_H_

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "app/app.h"
#include "app/zephin_stub_window.h"
#include "platform/framework/machine.h"
#include "setup/record.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scripted_desktop.h"

namespace zephin::test {

/// The captions of a record: these, and empty ones for all others.
Array<String> Captions(const std::map<Caption, String>& captions = {});

/// A machine in a scratch folder and a bundle on it, on which the program can be run as a whole or
/// a method of its window alone:
///
///   home/, System/, Applications/, Temporary/, Disk/Setup.app/Contents/{MacOS,Resources,Helpers}
class StubRun {
 public:
  StubRun();
  ~StubRun();

  ScratchFolder scratch;
  SetupRecord record;  ///< As a bundle without settings has it.
  Machine machine;
  ScriptedDesktop desktop;

  std::filesystem::path Home() const { return scratch / "home"; }
  std::filesystem::path Applications() const { return scratch / "Applications"; }
  std::filesystem::path Disk() const { return scratch / "Disk"; }
  std::filesystem::path Bundle() const { return Disk() / "Setup.app"; }
  std::filesystem::path Resources() const { return Bundle() / "Contents/Resources"; }

  /// Makes `Data2` in the bundle from a folder of the scratch folder.
  void SetPayload(const std::filesystem::path& folder, const std::string& topName) const;

  /// Writes the record into the bundle and runs the whole program. Gives the status of its end; -1
  /// if it was still waiting for its user when the script had ended.
  int Run();
  /// The same with whatever record the bundle has.
  int RunAsItStands();

  /// The main window without a start, its fields empty but for 27 empty captions. An application
  /// that has been opened stands behind it.
  ZephinStubWindow& BareWindow();
  /// Calls `body`, in which the program may quit or fail as in a handler. Gives the status of the
  /// run's end, or -1 if `body` returned.
  int Call(const std::function<void()>& body);

 private:
  std::unique_ptr<App> app_;
  Ref<ZephinStubWindow> window_;
};

}  // namespace zephin::test

#endif  // TESTS_SUPPORT_STUB_RUN_H_
