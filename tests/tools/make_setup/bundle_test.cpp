#include "tools/make_setup/bundle.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "setup/bundle_files.h"
#include "tests/support/limits.h"
#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"
#include "tests/tools/make_setup/warnings.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

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

/// Collects warnings. Ends the run after `endAt` reports unless that is 0.
class Collector : public Warnings {
 public:
  void BeginPacking(const Contents& all) override { promised = all; }
  void Packed(const Contents& more) override {
    packed.files += more.files;
    packed.bytes += more.bytes;
    if (++reports == endAt) {
      throw SetupError("ended");
    }
  }

  Contents promised;
  Contents packed;
  int reports = 0;
  int endAt = 0;
};

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
    MakeBundle({setup_, stub_, made_ / "My.app", values}, collector_);
  }

  test::ScratchFolder folder_;
  fs::path setup_ = folder_ / "setup";
  fs::path stub_ = folder_ / "Stub.app";
  fs::path made_ = folder_ / "made";
  Collector collector_;
};

TEST_F(MakeBundleTest, BundleContainsTheStubTheRecordAndTheNamedFiles) {
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

TEST_F(MakeBundleTest, EntryStartsTheBundleBesideItWhateverTheirPathIs) {
  Make(kSmallest);
  const fs::path place = folder_ / "it's \"a\" $(touch x) \\ \xC3\xA9/";
  const fs::path entry = place / "New 'name' %k.desktop";
  fs::create_directory(place);
  fs::rename(made_ / "My.app", place / "New 'name' %k.app");
  fs::rename(made_ / "My.desktop", entry);
  const fs::path program = place / "New 'name' %k.app/Contents/MacOS/Setup";
  test::WriteFile(program, "#!/bin/sh\nprintf x >> \"$MARK\"\n");
  fs::permissions(program, fs::perms(0755));
  // The entry of another installer must not start.
  test::WriteFile(place / "Other.desktop", "touch \"$MARK\"-other\n");
  const std::string text = test::ReadFile(entry);
  const std::size_t begin = text.find("\nExec=") + 6;
  std::string line = text.substr(begin, text.find('\n', begin) - begin);
  EXPECT_EQ(line.find_first_of("\\$`'"), std::string::npos) << line;
  line.replace(line.find("%k"), 2, "\"$GIVEN\"");
  setenv("ENTRY", entry.c_str(), 1);
  setenv("MARK", (folder_ / "mark").c_str(), 1);
  // Started as a program; by a desktop that gives the entry's path; by one that gives the folder's.
  for (const std::string& command :
       {std::string("\"$ENTRY\""), "GIVEN=\"$ENTRY\"; " + line, "GIVEN=\"${ENTRY%/*}\"; " + line}) {
    EXPECT_EQ(std::system(("(" + command + ") 2>/dev/null").c_str()), 0) << command;
    EXPECT_EQ(test::ReadFile(folder_ / "mark"), "x") << command;
    EXPECT_FALSE(fs::exists(folder_ / "mark-other"));
    fs::remove(folder_ / "mark");
  }
}

TEST_F(MakeBundleTest, EndedRunLeavesEverythingAsItWas) {
  Make(kSmallest);
  EXPECT_EQ(collector_.promised.files, 1);
  EXPECT_EQ(collector_.packed.bytes, collector_.promised.bytes);
  const auto before = test::Tree(made_);
  const int reports = collector_.reports;
  test::WriteFile(setup_ / "payload/new", "new");
  for (collector_.endAt = 1; collector_.endAt <= reports + 1; ++collector_.endAt) {
    collector_.reports = 0;
    EXPECT_NE(Refusal([&] { Make(kSmallest); }).find("ended"), std::string::npos);
    EXPECT_EQ(test::Tree(made_), before) << collector_.endAt;
  }
}

TEST_F(MakeBundleTest, CheckMakesNothingAndStrictRefusesWarnings) {
  test::WriteFile(setup_ / "setup.json",
                  R"({"fTargetFolder": "Tool", "payload": "payload", "fURLDisplayed": "x"})");
  const auto before = test::Tree(folder_.Path());
  CheckBundle({.folder = setup_}, collector_);
  EXPECT_EQ(collector_.list.size(), 1);
  BundleRequest request{setup_, stub_, made_ / "My.app"};
  request.strict = true;
  EXPECT_NE(Refusal([&] { MakeBundle(request, collector_); }).find("--strict"), std::string::npos);
  EXPECT_EQ(test::Tree(folder_.Path()), before);
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
    const auto make = [&, from = stub, to = output] { MakeBundle({setup_, from, to}, collector_); };
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

TEST_F(MakeBundleTest, ArchiveHasTheBundleWithItsModesAndTheSameBytesEachTime) {
  test::WriteFile(setup_ / "setup.json", kSmallest);
  const std::string longName(120, 'n');
  MakeTree(stub_, "Contents/deep/" + longName + "/\u00FC=long Contents/link->MacOS/Setup");
  const BundleRequest request{
      .folder = setup_, .stub = stub_, .output = made_ / "My.app", .archive = true};
  EXPECT_EQ(MakeBundle(request, collector_).beside,
            (std::vector<std::string>{"My.desktop", "My.tar.gz"}));
  const std::string archive = test::ReadFile(made_ / "My.tar.gz");
  ASSERT_EQ(std::system(("cd " + made_.string() + " && tar -xzf My.tar.gz").c_str()), 0);
  EXPECT_TRUE(test::ReadFile(made_ / "My/README.txt").ends_with("Setup in a terminal.\n"));
  EXPECT_EQ(TreeWords(made_ / "My/My.app"), TreeWords(made_ / "My.app"));
  EXPECT_EQ(fs::status(made_ / "My/My.desktop").permissions(), fs::perms{0755});
  EXPECT_EQ(fs::last_write_time(made_ / "My/My.app/Contents/Resources/Data"),
            std::chrono::floor<std::chrono::seconds>(fs::last_write_time(setup_ / "setup.json")));

  // A publisher with another umask, and a stub that has been copied anew.
  const mode_t mask = umask(077);
  fs::last_write_time(stub_ / "Contents/Info.plist", fs::file_time_type::clock::now() - 1000h);
  fs::permissions(stub_ / "Contents/MacOS/Setup", fs::perms{0700});
  MakeBundle(request, collector_);
  umask(mask);
  EXPECT_TRUE(test::ReadFile(made_ / "My.tar.gz") == archive);
}

TEST_F(MakeBundleTest, FullDiskLeavesEverythingAsItWas) {
  Make(kSmallest);
  const auto before = test::Tree(made_);
  test::WriteFile(setup_ / "payload/noise", test::Noise(90000));
  const BundleRequest request{
      .folder = setup_, .stub = stub_, .output = made_ / "My.app", .archive = true};
  for (const auto& [room, file] : {std::pair{100U, "Data: "},
                                   {2000U, "Data2: "},
                                   {40000U, "Data2: "},
                                   {57500U, "My.tar.gz"}}) {
    const test::FullDisk full(room);
    const std::string refusal = Refusal([&] { MakeBundle(request, collector_); });
    EXPECT_NE(refusal.find(file), std::string::npos) << refusal;
    EXPECT_TRUE(test::Tree(made_) == before) << room;
  }
}

}  // namespace
}  // namespace zephin::make_setup
