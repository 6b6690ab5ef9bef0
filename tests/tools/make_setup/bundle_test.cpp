#include "tools/make_setup/bundle.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"
#include "tools/make_setup/payload.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

/// A setup's folder, a stub and a folder for what is made, with one item in it that must stay.
class MakeBundleTest : public testing::Test {
 protected:
  void SetUp() override {
    MakeTree(setup_,
             "payload/file=content page.txt=Page helper.sh+=helper options/one/x=x "
             "other/one/x=x options/http/x=x");
    Generate({"options/large/noise", 12000, 1}, setup_);
    MakeTree(stub_, "Contents/MacOS/Setup+=stub Contents/Info.plist=plist");
    MakeTree(made_, "kept=kept");
  }

  void Make(const json& document, const std::map<std::string, std::string>& values = {}) {
    test::WriteFile(setup_ / "setup.json", document.dump());
    MakeBundle(setup_, stub_, made_ / "My.app", values);
  }

  [[nodiscard]] static json Smallest() {
    return {{"fTargetFolder", "Tool"}, {"payload", "payload"}};
  }

  test::ScratchFolder folder_;
  fs::path setup_ = folder_ / "setup";
  fs::path stub_ = folder_ / "Stub.app";
  fs::path made_ = folder_ / "made";
};

TEST_F(MakeBundleTest, HoldsTheStubTheRecordAndWhatTheRecordNames) {
  json document = Smallest();
  document["defaults"] = {{"HOST", "h"}, {"NAME", "n"}};
  document["fMessage"] = {"on ${HOST}", "${NAME}${NAME}"};
  document["fAgreement"] = "page.txt";
  document["fInfo"] = {{"file", "page.txt"}, {"form", "hex"}};
  document["fLabels"] = {{"install", "Go"}};
  document["helpers"] = {"helper.sh"};
  document["fExecuteAfterName"] = "helper.sh";
  document["fInstallChoices"] = {{{"caption", "C"}, {"source", "options/one/"}, {"folder", "F"}}};
  document["fInstallOptions"] = {
      {{"caption", "O"}, {"source", "options/one"}},
      {{"caption", "D"}, {"source", "http://${HOST}/d.zip"}, {"content", "options/large"}}};
  document["fPostCopy"] = {{{"delete", "/tmp/x"}}};
  Make(document, {{"HOST", "example"}});
  const fs::path resources = made_ / "My.app/Contents/Resources";
  EXPECT_EQ(test::ReadFile(resources / "TextData"),
            "Page|#|on example\nnn|#||#||#|$HTML$5000610067006500|#|||Go" + std::string(24, '|') +
                "|#|Tool|#||#||#||#||#||#|0|#||#||#||#||#||#||#||#||#|C,one.zip,F,|#|"
                "O,one.zip,Tool,|D,http://example/d.zip,Tool,|#||#||#||#||#||#|delete=/tmp/x");
  for (const fs::path& path : {resources / "Data2", resources / "one.zip", made_ / "d.zip"}) {
    EXPECT_TRUE(test::ReadFile(path).starts_with('P') && fs::remove(path)) << path;
  }
  EXPECT_TRUE(fs::remove(resources / "TextData") && fs::remove(resources / "Data"));
  EXPECT_TRUE(fs::remove(made_ / "My.desktop"));
  EXPECT_EQ(TreeWords(made_),
            "My.app/ My.app/Contents/ My.app/Contents/Info.plist=plist My.app/Contents/MacOS/ "
            "My.app/Contents/MacOS/Setup+=stub My.app/Contents/Resources/ "
            "My.app/Contents/Resources/helper.sh+=helper kept=kept");
}

TEST_F(MakeBundleTest, BadSetupIsToldByFieldAndChangesNothing) {
  Make(Smallest());
  const auto before = test::Tree(made_);
  struct Row {
    json change;
    const char* place;
  };
  const json option{{"caption", "O"}, {"source", "options/one"}};
  std::vector<json> eleven(11, option);
  for (std::size_t i = 0; i < eleven.size(); ++i) {
    eleven[i]["caption"] = std::to_string(i);
  }
  const auto withOption = [&option](const char* field, const json& value) {
    json entry = option;
    entry[field] = value;
    return json{{"fInstallOptions", {option, entry}}};
  };
  const std::vector<Row> rows{
      {{{"fTargetFolder", ""}}, "fTargetFolder"},
      {{{"fTargetFolder", ".."}}, "fTargetFolder"},
      {{{"fTargetFolder", "a/b"}}, "fTargetFolder"},
      {{{"fTargetFolder", std::string(241, 'x')}}, "fTargetFolder"},
      {{{"fTargetFolder", "__MACOSX"}}, "payload"},
      {{{"fMesage", "x"}}, "fMesage"},
      {{{"fMessage", 5}}, "fMessage"},
      {{{"fMessage", "a|#|b"}}, "fMessage"},
      {{{"fMessage", "${NONE}"}}, "${NONE}"},
      {{{"fMessage", "${NONE"}}, "${NONE"},
      {{{"fPromptToReplace", "1"}}, "fPromptToReplace"},
      {{{"fMinRAM", "3GB"}}, "fMinRAM"},
      {{{"fLabels", {{"instal", "x"}}}}, "fLabels: instal"},
      {{{"fAgreement", "none.txt"}}, "fAgreement: "},
      {{{"fAgreement", {{"file", "page.txt"}, {"form", "HEX"}}}}, "fAgreement: form"},
      {{{"fLogoPixelStr", "page.txt"}}, "fLogoPixelStr: "},
      {{{"fExecuteBeforeName", "helper.sh"}}, "fExecuteBeforeName: "},
      {{{"helpers", {"."}}}, "helpers: "},
      {{{"helpers", {"payload/../helper.sh", "helper.sh"}}}, "helpers: "},
      {{{"payload", "none"}}, "payload: "},
      {{{"pieceSize", 1000000}}, "pieceSize: "},
      {{{"generate", {{{"path", "file"}, {"kind", "noise"}}}}}, "generate: "},
      {{{"patch", {{"old", "payload"}, {"new", "none"}}}}, "patch: takes the place"},
      {withOption("caption", "o"), "fInstallOptions: entry 2: caption"},
      {withOption("caption", "a,b"), "fInstallOptions: entry 2: "},
      {withOption("source", "other/one"), "fInstallOptions: entry 2: "},
      {withOption("folder", "../x"), "fInstallOptions: entry 2: "},
      {{{"fInstallOptions", eleven}}, "fInstallOptions: has more than ten"},
      {{{"fInstallOptions", {{{"caption", "H"}, {"source", "options/http"}}}}}, "address"},
      {{{"fInstallOptions", {{{"caption", "H"}, {"source", "http://h/"}}}}}, "entry 1: source"},
      {{{"fInstallChoices", {{{"caption", "H"}, {"source", "http://h/x"}}}}}, "fInstallChoices: "},
      {{{"fInstallOptions",
         {{{"caption", "S"}, {"source", "HTTP://h/x"}, {"content", "options/one"}}}}},
       "too small for a download"},
      {{{"fPostCopy", {{{"copy", "a"}}}}}, "fPostCopy: entry 1: to"},
      {{{"fPostCopy", {{{"delete", "/a"}, {"to", "/b"}}}}}, "fPostCopy: entry 1: to"},
  };
  for (const Row& row : rows) {
    json document = Smallest();
    document.update(row.change);
    const std::string refusal = Refusal([&] { Make(document); });
    EXPECT_NE(refusal.find("setup.json: "), std::string::npos) << row.change << refusal;
    EXPECT_NE(refusal.find(row.place), std::string::npos) << row.change << refusal;
    EXPECT_EQ(test::Tree(made_), before) << row.change;
  }
  EXPECT_NE(Refusal([&] { Make(Smallest(), {{"PORT", "1"}}); }).find("PORT"), std::string::npos);
  for (const std::string& text : {std::string(), std::string("[]"), std::string(99999, '[')}) {
    test::WriteFile(setup_ / "setup.json", text);
    EXPECT_NE(Refusal([&] { MakeBundle(setup_, stub_, made_ / "My.app", {}); }), "");
  }
}

TEST_F(MakeBundleTest, PlaceThatMustNotBeReplacedIsRefused) {
  test::WriteFile(setup_ / "setup.json", Smallest().dump());
  MakeTree(folder_ / "Precious.app", "Contents/letters=x");
  const auto before = test::Tree(folder_.Path());
  const std::vector<std::pair<fs::path, fs::path>> rows{{stub_, made_ / "My"},
                                                        {stub_, folder_ / "Precious.app"},
                                                        {stub_, stub_},
                                                        {stub_, setup_ / "payload" / "My.app"},
                                                        {stub_, folder_ / "no/My.app"},
                                                        {made_, made_ / "My.app"}};
  for (const auto& [stub, output] : rows) {
    const auto make = [&, from = stub, to = output] { MakeBundle(setup_, from, to, {}); };
    EXPECT_NE(Refusal(make), "") << output;
    EXPECT_EQ(test::Tree(folder_.Path()), before) << output;
  }
}

TEST_F(MakeBundleTest, PiecesOfAnEarlierSplitPayloadGo) {
  MakeTree(made_, "Data#2=old Data#9=old Data#End=old Data#x=x");
  json document = Smallest();
  document["generate"] = {{{"path", "n"}, {"kind", "noise"}, {"bytes", 5000}}};
  document["pieceSize"] = 2500;
  Make(document);
  auto tree = test::Tree(made_);
  EXPECT_EQ(tree["My.app/Contents/Resources/Data#1"].size() + tree["Data#2"].size(), 5000);
  EXPECT_TRUE(tree.contains("Data#End") && tree.contains("Data#x"));
  EXPECT_FALSE(tree.contains("Data#9") || tree.contains("My.app/Contents/Resources/Data2"));
}

TEST_F(MakeBundleTest, PatchIsMadeFromAnotherSetupAndTheChangesToIt) {
  MakeTree(folder_ / "update", "changes/new=n changes/deep/file=changed");
  MakeTree(setup_, "payload/deep/file=f payload/gone=g payload/link->.");
  json document = Smallest();
  document["generate"] = {{{"path", "big"}, {"kind", "noise"}, {"bytes", 5000}}};
  test::WriteFile(setup_ / "setup.json", document.dump());
  const auto make = [&](const json& removed) {
    const json patch{{"old", "../setup"}, {"overlay", "changes"}, {"remove", removed}};
    test::WriteFile(folder_ / "update/setup.json",
                    json{{"fTargetFolder", "Tool"}, {"patch", patch}}.dump());
    MakeBundle(folder_ / "update", stub_, made_ / "Update.app", {});
  };
  for (const char* path : {"none", "../setup.json", "link/gone"}) {
    EXPECT_NE(Refusal([&] { make({path}); }).find("patch: "), std::string::npos) << path;
  }
  make({"gone"});
  EXPECT_LT(fs::file_size(made_ / "Update.app/Contents/Resources/Data2"), 2000);
  EXPECT_EQ(test::Tree(setup_ / "payload").at("gone"), "g");
}

TEST_F(MakeBundleTest, DiskThatFillsUpLeavesEverythingAsItWas) {
  Make(Smallest());
  const auto before = test::Tree(made_);
  json document = Smallest();
  document["fMessage"] = "another one";
  document["generate"] = {{{"path", "n"}, {"kind", "noise"}, {"bytes", 50000}}};
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  for (const rlim_t most : {100U, 2000U, 50000U}) {
    const rlimit small{most, limit.rlim_max};
    test::WriteFile(setup_ / "setup.json", document.dump());
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string refusal = Refusal([&] { MakeBundle(setup_, stub_, made_ / "My.app", {}); });
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_NE(refusal, "") << most;
    EXPECT_EQ(test::Tree(made_), before) << most;
  }
  (void)std::signal(SIGXFSZ, handler);
}

}  // namespace
}  // namespace zephin::make_setup
