#include <gtest/gtest.h>

#include "platform/bundle/bundle_location.h"
#include "tests/support/stub_run.h"
#include "util/globals.h"

namespace zephin::test {
namespace {

TEST(BundleLocation, BundleIsAboveTheFirstContentsInThePath) {
  const std::vector<std::tuple<const char*, const char*, const char*>> rows{
      {"/Disk/Setup.app/Contents/MacOS/Setup", "/Disk/", "/Disk/Setup.app/Contents"},
      {"/Users/a/ContentsOld/S.app/Contents/MacOS/x", "/Users/", "/Users/a/Contents"},
      {"/\u00E9\xFF/S.app/CONTENTS/x", "/\u00E9\xFF/", "/\u00E9\xFF/S.app/CONTENTS"},
      {"/AppTranslocation/S.app/Contents/x", "/AppTranslocation/",
       "/AppTranslocation/S.app/Contents"},
      {"/usr/bin/setup", "", ""},
  };
  for (const auto& [executable, folder, contentsPath] : rows) {
    StubRun run;
    run.machine.executable = executable;
    run.BareWindow();
    EXPECT_EQ(ViewConst::GetApplicationPath().Bytes(), folder) << executable;
    const Ref<FolderItem> contents = ViewConst::ContentsFolder();
    EXPECT_EQ(contents.IsNil() ? "" : contents->NativePath().Bytes(), contentsPath);
  }
}

TEST(BundleLocation, TranslocationEndsTheRunUnlessItIsIgnored) {
  StubRun run;
  run.machine.executable = "/a/AppTranslocation/S.app/Contents/MacOS/S";
  run.BareWindow();
  ViewConst::gIgnoreTranslocationError = false;
  run.desktop.ExpectWindow("Gatekeeper Translocation Issue", "CancelBtn");
  EXPECT_EQ(run.Call([] { (void)ViewConst::GetApplicationPath(); }), 0);
}

}  // namespace
}  // namespace zephin::test
