#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/limits.h"
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
    make_setup::ZipFolder(run.scratch / "content", "", run.scratch / "archive.zip");
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
  const std::string failed = "Setup file download failed.";
};

TEST_F(Download, LengthOfTheBodyAloneDecidesBeforeTheExpansion) {
  const std::string head = "HTTP/1.1 200 OK\r\nContent-Length: 30000\r\n\r\n";
  struct Row {
    std::string name;
    std::string answer;
    bool longEnough;
    bool result;
  };
  const std::vector<Row> rows{
      {"archive", HttpResponse("200 OK", archive), true, true},
      {"a byte too short", HttpResponse("200 OK", std::string(kSmallest - 1, 'x')), false, false},
      {"long enough", HttpResponse("200 OK", std::string(kSmallest, 'x')), true, false},
      {"error page", HttpResponse("404 No", std::string(2 * kSmallest, 'x')), true, false},
      {"redirect", HttpResponse("302 Found\r\nLocation: /x", "there"), false, false},
      {"cut short", head + archive.substr(0, kSmallest - 1), false, false},
      {"cut later", head + archive.substr(0, kSmallest), true, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove_all(target);
    const LoopbackServer server(row.answer);
    if (!row.longEnough) {
      run.desktop.ExpectMessage(failed);
    }
    EXPECT_EQ(Fetch(server.Address("/a/extra.zip"), target), row.result);
    // The folder is made by the expansion, whatever comes of it.
    EXPECT_EQ(fs::exists(target), row.longEnough);
    EXPECT_EQ(fs::exists(target / "noise"), row.result);
    EXPECT_FALSE(fs::exists(run.Applications() / "extra.zip"));
    EXPECT_EQ(server.Requests().size(), 1U);
  }
}

TEST_F(Download, SecureAddressesAreToldByTheirFirstFiveLetters) {
  const LoopbackServer server(HttpResponse("200 OK", archive));
  std::string address = server.Address("/extra.zip");
  EXPECT_TRUE(Fetch(address.replace(0, 4, "HTTP"), target));
  run.desktop.ExpectMessage(failed);
  EXPECT_FALSE(Fetch(address.replace(0, 4, "HTTPs"), target));
  // It was asked, but not in the clear.
  EXPECT_FALSE(server.Requests().at(1).starts_with("GET"));
}

TEST_F(Download, ArchiveIsStoredBesideItsFolderForTheTimeOfTheExpansion) {
  const LoopbackServer server(HttpResponse("200 OK", archive));
  struct Row {
    fs::path target;
    fs::path stored;
  };
  for (const Row& row :
       {Row{target, run.Applications() / "extra.zip"},
        Row{run.Applications() / "Tool.app/Extras_Option", run.Applications() / "extra.zip"},
        Row{run.Applications() / "Tool.app/In/Extras",
            run.Applications() / "Tool.app/In/extra.zip"}}) {
    // What stands there is replaced; what stands in the folder is expanded over.
    WriteFile(row.stored, "left over");
    WriteFile(row.target / "keep", "k");
    EXPECT_TRUE(Fetch(server.Address("/extra.zip"), row.target)) << row.target;
    EXPECT_FALSE(fs::exists(row.stored)) << row.target;
    EXPECT_TRUE(fs::exists(row.target / "keep"));
    EXPECT_TRUE(fs::exists(row.target / "noise"));
  }
}

TEST_F(Download, PlaceThatCanNotBeWrittenIsToldAndAFullDiskIsNot) {
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
  const FullDisk full(5000);
  EXPECT_FALSE(Fetch(server.Address("/extra.zip"), target));
  EXPECT_FALSE(fs::exists(run.Applications() / "extra.zip"));
}

TEST_F(Download, NothingThatIsNamedLikeTheArchiveIsRenamedAway) {
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
