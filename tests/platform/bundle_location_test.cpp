#include "platform/bundle_location.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/gatekeeper_dialog.h"
#include "tests/support/stub_run.h"
#include "util/globals.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

TEST(BundleLocation, FirstContentsOfTheExecutablesPathDecides) {
  const struct {
    const char* executable;
    const char* folder;
    const char* contents;  ///< Empty: none.
  } rows[] = {
      {"/Volumes/Disk/Setup.app/Contents/MacOS/Setup", "/Volumes/Disk/",
       "/Volumes/Disk/Setup.app/Contents"},
      {"/Users/a/Contents/Setup.app/Contents/MacOS/x", "/Users/", "/Users/a/Contents"},
      {"/a/b/ContentsOld/Setup.app/Contents/MacOS/x", "/a/", "/a/b/Contents"},
      {"/Disk/Setup.app/CONTENTS/MacOS/x", "/Disk/", "/Disk/Setup.app/CONTENTS"},
      {"/Caf\u00E9/\u00DC\xFF.app/Contents/x", "/Caf\u00E9/", "/Caf\u00E9/\u00DC\xFF.app/Contents"},
      {"/Setup.app/Contents/x", "/", "/Setup.app/Contents"},
      {"/a/AppTranslocation/1/S.app/Contents/x", "/a/AppTranslocation/1/",
       "/a/AppTranslocation/1/S.app/Contents"},
      {"/usr/bin/setup", "", ""},
  };
  for (const auto& row : rows) {
    StubRun run;
    run.machine.executable = row.executable;
    run.BareWindow();
    EXPECT_EQ(ViewConst::GetApplicationPath().Bytes(), row.folder) << row.executable;
    const Ref<FolderItem> contents = ViewConst::ContentsFolder();
    EXPECT_EQ(contents.IsNil() ? "" : contents->NativePath().Bytes(), row.contents);
  }
}

TEST(BundleLocation, TranslocationEndsTheRunAndIsClearedOnOkAlone) {
  for (const bool ok : {true, false}) {
    StubRun run;
    run.machine.executable = "/a/AppTranslocation/S.app/Contents/MacOS/S";
    run.BareWindow();
    // A sudo of our own notes its arguments and its input.
    const fs::path tools = run.scratch / "tools";
    WriteFile(tools / "sudo", "#!/bin/sh\n{ printf '[%s]' \"$@\"; cat; } > \"" +
                                  (run.scratch / "log").string() + "\"\n");
    fs::permissions(tools / "sudo", fs::perms(0755));
    const std::string searchPath = std::getenv("PATH");
    setenv("PATH", (tools.string() + ":" + searchPath).c_str(), 1);
    run.desktop.ExpectWindow("Gatekeeper Translocation Issue", [ok](Window& shown) {
      auto& window = dynamic_cast<TGatekeeperTranslocationDlg&>(shown);
      EXPECT_FALSE(window.AdminPasswordEdit()->Password());
      window.AdminPasswordEdit()->SetText("pass word");
      window.AppPathEdit()->SetText("/Apps/A b.app");
      ScriptedDesktop::Press(window, ok ? "OKBtn" : "CancelBtn");
    });
    ViewConst::gIgnoreTranslocationError = false;

    EXPECT_EQ(run.Call([] { (void)ViewConst::GetApplicationPath(); }), 0);

    setenv("PATH", searchPath.c_str(), 1);
    ASSERT_EQ(fs::exists(run.scratch / "log"), ok);
    if (ok) {
      EXPECT_EQ(ReadFile(run.scratch / "log"),
                "[-S][xattr][-r][-d][com.apple.quarantine][/Apps/A b.app]pass word\n");
    }
  }
}

}  // namespace
}  // namespace zephin::test
