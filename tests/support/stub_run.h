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

/// A machine in a scratch folder with a bundle. Runs the whole program or single methods of its
/// window:
///
///   home/, System/, Applications/, Temporary/, Disk/Setup.app/Contents/{MacOS,Resources,Helpers}
class StubRun {
 public:
  StubRun();
  ~StubRun();

  ScratchFolder scratch;
  SetupRecord record;  ///< Initially that of a bundle without settings.
  Machine machine;
  ScriptedDesktop desktop;

  std::filesystem::path Home() const { return scratch / "home"; }
  std::filesystem::path Applications() const { return scratch / "Applications"; }
  std::filesystem::path Disk() const { return scratch / "Disk"; }
  std::filesystem::path Bundle() const { return Disk() / "Setup.app"; }
  std::filesystem::path Resources() const { return Bundle() / "Contents/Resources"; }

  /// Makes `Data2` in the bundle from a folder of the scratch folder.
  void SetPayload(const std::filesystem::path& folder, const std::string& topName) const;

  /// Writes the record into the bundle and runs the whole program. Returns its exit status, or -1
  /// if it still waits for the user at the end of the script.
  int Run();
  /// The same with the record that is already in the bundle.
  int RunAsItStands();

  /// The main window before the start-up: its fields are empty, except for 27 empty captions. Its
  /// application has been opened.
  ZephinStubWindow& BareWindow();
  /// Calls `body`, which may quit or raise as a handler may. Returns the exit status, or -1 if
  /// `body` returned.
  int Call(const std::function<void()>& body);

 private:
  std::unique_ptr<App> app_;
  Ref<ZephinStubWindow> window_;
};

}  // namespace zephin::test

#endif  // TESTS_SUPPORT_STUB_RUN_H_
