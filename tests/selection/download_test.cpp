#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/loopback_server.h"
#include "tests/support/stub_run.h"
#include "tests/tools/make_setup/trees.h"
#include "tools/make_setup/zip_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using make_setup::MakeTree;

constexpr std::size_t kSmallest = 10'000;

class Download : public testing::Test {
 protected:
  Download() {
    MakeTree(run.scratch / "content", "noise=" + Noise(30'000));
    make_setup::ZipFolder(run.scratch / "content", run.scratch / "archive.zip");
    archive = ReadFile(run.scratch / "archive.zip");
  }
  bool Fetch(const std::string& url, const fs::path& folder, bool renameFlag = false) {
    return window.DownloadURL(Utf8(url), Utf8(url.substr(url.rfind('/') + 1)), Utf8(folder),
                              renameFlag);
  }

  StubRun run;
  std::string archive;
  ZephinStubWindow& window = run.BareWindow();
  const fs::path target = run.Applications() / "Extras_Option";
};

TEST_F(Download, OnlyTheBodysLengthIsCheckedBeforeTheExpansion) {
  for (const std::string& body :
       {std::string(kSmallest - 1, 'x'), std::string(kSmallest, 'x'), archive}) {
    const LoopbackServer server(HttpResponse("404 No", body));
    const bool isLongEnough = body.size() >= kSmallest;
    if (!isLongEnough) {
      run.desktop.ExpectMessage("Setup file download failed.");
    }
    EXPECT_EQ(Fetch(server.Address("/a/extra.zip"), target), body == archive);
    // The expansion creates the folder even if it fails.
    EXPECT_EQ(fs::exists(target), isLongEnough);
    EXPECT_EQ(fs::exists(target / "noise"), body == archive);
    EXPECT_FALSE(fs::exists(run.Applications() / "extra.zip"));
    EXPECT_EQ(server.Requests().size(), 1U);
  }
}

TEST_F(Download, ArchiveIsStoredBesideItsFolderDuringTheExpansion) {
  const LoopbackServer server(HttpResponse("200 OK", archive));
  for (const auto& [name, archiveName] : {std::pair{"Extras_Option", "extra.zip"},
                                          {"Tool.app/Extras_Option", "extra.zip"},
                                          {"Tool.app/In/Extras", "Tool.app/In/extra.zip"}}) {
    const fs::path folder = run.Applications() / name;
    const fs::path stored = run.Applications() / archiveName;
    // An existing file is replaced; an existing folder keeps what it holds.
    WriteFile(stored, "left over");
    WriteFile(folder / "keep", "k");
    EXPECT_TRUE(Fetch(server.Address("/extra.zip"), folder)) << name;
    EXPECT_FALSE(fs::exists(stored)) << name;
    EXPECT_TRUE(fs::exists(folder / "keep") && fs::exists(folder / "noise")) << name;
  }
}

TEST_F(Download, PlaceThatCannotBeWrittenIsReported) {
  const LoopbackServer server(HttpResponse("200 OK", archive));
  fs::create_directory(run.Applications() / "taken");
  for (const auto& [path, where] : {std::pair{"/extra.zip", run.Applications() / "missing/Extras"},
                                    {"/", target},
                                    {"/taken", target},
                                    {"/..", target}}) {
    run.desktop.ExpectMessage("Install of download failed.  Check account permissions.");
    EXPECT_FALSE(Fetch(server.Address(path), where)) << path;
    EXPECT_FALSE(fs::exists(where));
  }
}

TEST_F(Download, NoItemWithTheArchivesNameIsRenamed) {
  WriteFile(run.Applications() / "Extras/keep", "k");
  for (const std::string& body : {archive, std::string(kSmallest, 'x')}) {
    for (const char* path : {"/Extras.zip", "/noextension"}) {
      const LoopbackServer server(HttpResponse("200 OK", body));
      Fetch(server.Address(path), target, true);
      EXPECT_TRUE(fs::exists(run.Applications() / "Extras/keep"));
      EXPECT_TRUE(fs::is_directory(target));
      EXPECT_FALSE(fs::exists(run.Applications() / "noextension"));
      fs::remove_all(target);
    }
  }
}

TEST_F(Download, QuitDuringTheTransferLeavesNothingBehind) {
  const LoopbackServer server("HTTP/1.1 200 OK\r\n\r\n" + std::string(2 * kSmallest, 'x'),
                              LoopbackServer::Then::KeepOpen);
  run.desktop.After(200, [this] { run.desktop.PressInMain("QuitBtn"); });
  EXPECT_EQ(run.Call([&] { Fetch(server.Address("/extra.zip"), target); }), 0);
  EXPECT_TRUE(fs::is_empty(run.Applications()));
}

}  // namespace
}  // namespace zephin::test
