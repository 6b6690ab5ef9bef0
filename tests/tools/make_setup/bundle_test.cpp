#include "tools/make_setup/bundle.h"

#include <gtest/gtest.h>

#include <array>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "setup/scrambling.h"
#include "tests/support/limits.h"
#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr const char* kSmallest = R"({"fTargetFolder": "Tool", "payload": "payload"})";

constexpr const char* kWhole = R"({
  "defaults": {"HOST": "h", "NAME": "n"},
  "fTimeStamp": "|~$|", "fApplicationFolder": true, "fPromptToReplace": true,
  "fCenterMessage": true, "fEncryptionLen": 77,
  "helpers": ["helper.sh"], "fExecuteAfterName": "helper.sh",
  "fExecuteBeforeName": "UserAccount/before",
  "fAgreement": "a.txt", "fInfo": {"file": "b.txt", "form": "hex"},
  "fPreInstallNotes": "c.txt", "fPostInstallNotes": "d.txt",
  "fMessage": ["#|on ${HOST}", "${NAME}${NAME}|"], "fCopyright": "\u00A9", "fWindowTitle": "title",
  "fURLActual": "actual", "fURLDisplayed": "$|~", "fCompletionURL": "done",
  "fLabels": {"install": "Go"}, "fMinOS": "MacOS10.9", "fMinRAM": "1GB",
  "fTargetFolder": "Tool", "payload": "payload", "fInstallationPatch": true,
  "fInstallChoices": [{"caption": "C", "source": "options/one/", "folder": "F", "tip": "T"}],
  "fInstallOptions": [
    {"caption": "O", "source": "options/one"},
    {"caption": "D", "source": "http://${HOST}/d.zip", "content": "options/large"}],
  "fPostCopy": [
    {"copy": "a/b", "to": "UserAccount/b"},
    {"copy": "a", "to": "/x/a", "ifFolder": "userACCOUNT/f"},
    {"copy": "a", "to": "/x/a;b", "ifNothingThere": true},
    {"delete": "/x"}, {"allUsersFullAccess": "UserAccount/x"},
    {"preInstallDelete": "/y"}, {"preInstallCopy": "/y", "to": "/z"}]
})";

/// The smallest setup with a fault, and part of the message.
struct BadSetup {
  const char* list;     ///< The list whose one entry has the fields; empty if the setup has them.
  const char* fields;   ///< Without the braces.
  const char* message;  ///< Part of it, after the name of the file.
};

constexpr auto kBadSetups = std::to_array<BadSetup>({
    {"", R"("fTargetFolder": "")", "fTargetFolder: is required"},
    {"", R"("fTargetFolder": "..")", "fTargetFolder: "},
    {"", R"("fTargetFolder": "a/b")", "fTargetFolder: "},
    {"", R"("fMesage": "x")", "fMesage: there is no such field"},
    {"", R"("fMessage": "a|#")", "fMessage: "},
    {"", R"("fTimeStamp": "$|~")", "fTimeStamp: "},
    {"", R"("fMessage": "${NONE}")", "${NONE}"},
    {"", R"("fMessage": "${NONE")", "${NONE"},
    {"", R"("fPromptToReplace": "1")", "fPromptToReplace: "},
    {"", R"("fMinRAM": "3GB")", "fMinRAM: "},
    {"", R"("fLabels": {"quit": "a|b"})", "fLabels: quit: must not contain"},
    {"", R"("fAgreement": "none.txt")", "fAgreement: "},
    {"", R"("fAgreement": {"file": "a.txt", "form": "HEX"})", "fAgreement: form"},
    {"", R"("fLogoPixelStr": "a.txt")", "fLogoPixelStr: "},
    {"", R"("fExecuteBeforeName": "helper.sh")", "fExecuteBeforeName: "},
    {"", R"("helpers": ["payload/../helper.sh", "helper.sh"])", "helpers: "},
    {"", R"("pieceSize": 1000000)", "pieceSize: "},
    {"", R"("patch": {"old": "payload", "new": "none"})", "patch: takes the place"},
    {"",
     R"("fInstallOptions": [{"caption": "O", "source": "options/one"},
                              {"caption": "o", "source": "options/one"}])",
     "fInstallOptions: entry 2: caption"},
    {"",
     R"("fInstallOptions": [{"caption": "O", "source": "options/one"},
                              {"caption": "P", "source": "other/one"}])",
     "fInstallOptions: entry 2: "},
    {"fInstallOptions", R"("caption": "a,b", "source": "options/one")", "entry 1: "},
    {"fInstallOptions", R"("caption": "H", "source": "options/one", "folder": "../x")", "folder"},
    {"fInstallOptions", R"("caption": "H", "source": "options/http")",
     "must not begin with \"http\""},
    {"fInstallOptions", R"("caption": "H", "source": "HTTP://h/x", "content": "options/one")",
     "must have at least 10000 bytes"},
    {"fInstallChoices", R"("caption": "H", "source": "http://h/x")", "entry 1: source"},
    // Commands that the installer would read as something else.
    {"fPostCopy", R"("copy": "a=b", "to": "/x")", "entry 1: "},
    {"fPostCopy", R"("copy": "preinstallCopy", "to": "/x")", "entry 1: "},
    {"fPostCopy", R"("copy": "a", "to": "/x}y", "ifNothingThere": true)", "entry 1: "},
    {"fPostCopy", R"("copy": "a", "to": "/x", "ifFolder": "/f]g")", "entry 1: "},
    {"fPostCopy", R"("delete": "/a", "to": "/b")", "entry 1: to"},
    {"fPostCopy", R"("delete": "relative")", "entry 1: "},
    {"fPostCopy", R"("preInstallDelete": "UserAccount/x")", "entry 1: "},
    {"fPostCopy", R"("preInstallCopy": "/a", "to": "/x;y")", "entry 1: "},
});

/// A setup's folder, a stub and an output folder that contains an item already.
class MakeBundleTest : public testing::Test {
 protected:
  void SetUp() override {
    MakeTree(setup_,
             "payload/file=content payload/link->.. a.txt=A b.txt=B c.txt=C d.txt=D "
             "helper.sh+=helper options/one/x=x other/one/x=x options/http/x=x");
    test::WriteFile(setup_ / "options/large/noise", test::Noise(20000));
    MakeTree(stub_, "Contents/MacOS/Setup+=stub Contents/Info.plist=plist");
    MakeTree(made_, "kept=kept");
  }

  void Make(const std::string& text, const std::map<std::string, std::string>& values = {}) {
    test::WriteFile(setup_ / "setup.json", text);
    MakeBundle(setup_, stub_, made_ / "My.app", values);
  }

  /// Expects the smallest setup with these fields changed to fail and to change nothing.
  void ExpectRefused(const json& changes, const std::string& message) {
    const auto before = test::Tree(made_);
    json document = json::parse(kSmallest);
    document.update(changes);
    const std::string refusal = Refusal([&] { Make(document.dump()); });
    EXPECT_NE(refusal.find("setup.json: "), std::string::npos) << document << refusal;
    EXPECT_NE(refusal.find(message), std::string::npos) << document << refusal;
    EXPECT_EQ(test::Tree(made_), before) << document;
  }

  test::ScratchFolder folder_;
  fs::path setup_ = folder_ / "setup";
  fs::path stub_ = folder_ / "Stub.app";
  fs::path made_ = folder_ / "made";
};

TEST_F(MakeBundleTest, BundleHasTheStubTheRecordAndWhatItNames) {
  Make(kWhole, {{"HOST", "example"}});
  const fs::path resources = made_ / "My.app/Contents/Resources";
  std::string outer = test::ReadFile(resources / "Data");
  UnscrambleBytes(outer, 0);
  EXPECT_EQ(outer, "|~$|$|~1$|~helper.sh$|~$|~$|~$|~1$|~UserAccount/before$|~$|~77$|~1$|~");
  EXPECT_EQ(test::ReadFile(resources / "TextData"),
            "A|#|#|on example\nnn||#|actual|#|$|~|#|$HTML$4200|#|||Go" + std::string(24, '|') +
                "|#|Tool|#|\xC2\xA9|#|title|#||#||#||#|1|#||#||#||#||#||#||#||#||#|C,one.zip,F,T"
                "|#|O,one.zip,Tool,|D,http://example/d.zip,Tool,|#|MacOS10.9|#|1GB|#|done|#|C|#|D"
                "|#|a/b=UserAccount/b|a=[userACCOUNT/f]/x/a|a={/x/a;b}|delete=/x|"
                "allusersfullaccess=UserAccount/x|preinstalldelete=/y|preinstallcopy=/y;/z");
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

TEST_F(MakeBundleTest, FaultIsReportedWithItsFieldAndChangesNothing) {
  Make(kSmallest);
  for (const BadSetup& row : kBadSetups) {
    const json fields = json::parse(std::string("{") + row.fields + "}");
    const bool isList = *row.list != '\0';
    ExpectRefused(isList ? json{{row.list, json::array({fields})}} : fields, row.message);
  }
  ExpectRefused({{"fTargetFolder", std::string(241, 'x')}}, "fTargetFolder: ");
  json eleven;
  for (int i = 0; i < 11; ++i) {
    eleven.push_back({{"caption", std::to_string(i)}, {"source", "options/one"}});
  }
  ExpectRefused({{"fInstallOptions", eleven}}, "fInstallOptions: must have at most 10");
  EXPECT_NE(Refusal([&] { Make(kSmallest, {{"PORT", "1"}}); }).find("PORT"), std::string::npos);
  for (const std::string& text : {std::string(), std::string("[]"), std::string(99999, '[')}) {
    EXPECT_NE(Refusal([&] { Make(text); }), "");
  }
}

TEST_F(MakeBundleTest, OutputThatMustNotBeReplacedIsRefused) {
  test::WriteFile(setup_ / "setup.json", kSmallest);
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

TEST_F(MakeBundleTest, PiecesOfAnEarlierPayloadAreRemoved) {
  MakeTree(made_, "Data#2=old Data#9=old Data#End=old Data#x=x");
  test::WriteFile(setup_ / "payload/noise", test::Noise(9000));
  Make(R"({"fTargetFolder": "Tool", "payload": "payload", "pieceSize": 2500})");
  auto tree = test::Tree(made_);
  EXPECT_EQ(tree["My.app/Contents/Resources/Data#1"].size() + tree["Data#2"].size(), 5000);
  EXPECT_TRUE(tree.contains("Data#End") && tree.contains("Data#x"));
  EXPECT_FALSE(tree.contains("Data#9") || tree.contains("My.app/Contents/Resources/Data2"));
}

TEST_F(MakeBundleTest, PayloadOfAPatchIsTheDifference) {
  test::WriteFile(setup_ / "payload/noise", test::Noise(90000));
  fs::copy(setup_ / "payload", setup_ / "new",
           fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  test::WriteFile(setup_ / "new/file", "changed");
  Make(R"({"fTargetFolder": "Tool", "patch": {"old": "payload", "new": "new"}})");
  EXPECT_LT(fs::file_size(made_ / "My.app/Contents/Resources/Data2"), 2000);
}

TEST_F(MakeBundleTest, FullDiskLeavesEverythingAsItWas) {
  Make(kSmallest);
  const auto before = test::Tree(made_);
  test::WriteFile(setup_ / "payload/noise", test::Noise(90000));
  for (const std::size_t room : {100U, 2000U, 50000U}) {
    const test::FullDisk full(room);
    EXPECT_NE(Refusal([&] { MakeBundle(setup_, stub_, made_ / "My.app", {}); }), "") << room;
    EXPECT_EQ(test::Tree(made_), before) << room;
  }
}

}  // namespace
}  // namespace zephin::make_setup
