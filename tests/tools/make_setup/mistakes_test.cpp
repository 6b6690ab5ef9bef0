#include <gtest/gtest.h>
#include <png.h>

#include <array>
#include <csignal>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"
#include "tests/tools/make_setup/warnings.h"
#include "tools/make_setup/bundle.h"
#include "tools/make_setup/checks.h"
#include "tools/make_setup/progress.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

/// One mistake of a publisher and its complete message.
struct Mistake {
  const char* fields;   ///< Added to the smallest setup that works, or replacing its own.
  const char* message;  ///< Behind the path of setup.json. "~" is the setup's folder.
};

constexpr auto kErrors = std::to_array<Mistake>({
    {R"("fTargetFolder": "")", R"(fTargetFolder: is required)"},
    {R"("fTargetFolder": "..")",
     R"(fTargetFolder: "..": must be the name of a folder, not a path, of at most 240 bytes)"},
    {R"("fTargetFolder": "a/b")",
     R"(fTargetFolder: "a/b": must be the name of a folder, not a path, of at most 240 bytes)"},
    {R"("fMesage": "x")", R"(fMesage: there is no such field)"},
    {R"("fMessage": "a|#")",
     R"(fMessage: must not contain "|#|" or end in the beginning of it: the record is cut there)"},
    {R"("fMessage": 1)", R"(fMessage: must be a text in quotes or a list of such lines)"},
    {R"("fTimeStamp": "$|~")",
     R"(fTimeStamp: must not contain "$|~" or end in the beginning of it: the record is cut there)"},
    {R"("fMessage": "${NONE}")", R"(fMessage: "${NONE}": must be one of the names in "defaults")"},
    {R"("fMessage": "${NONE")", R"(fMessage: "${NONE": must be one of the names in "defaults")"},
    {R"("fPromptToReplace": "1")", R"(fPromptToReplace: must be true or false)"},
    {R"("fEncryptionLen": -1)", R"(fEncryptionLen: must be a whole number of 0 or more)"},
    {R"("fMinOS": "10.9")",
     R"(fMinOS: "10.9": must be one of MacOS10.7, MacOS10.8, MacOS10.9, MacOS10.10, MacOS10.11, MacOS10.12, MacOS10.13)"},
    {R"("fMinRAM": "3GB")",
     R"(fMinRAM: "3GB": must be one of 250MB, 500MB, 1GB, 2GB, 4GB, 8GB, 16GB, 32GB)"},
    {R"("fLabels": {"quit": "a|b"})", R"(fLabels: quit: must not contain "|")"},
    {R"("fLabels": {"qiut": "a"})", R"(fLabels: qiut: there is no such field)"},
    {R"("fAgreement": "none.txt")", R"(fAgreement: ~/none.txt: no such file)"},
    {R"("fAgreement": "a.pdf")", R"(fAgreement: "a.pdf": must be a file "*.txt" or "*.html")"},
    {R"("fAgreement": "h.txt")",
     R"(fAgreement: h.txt: must not contain "<html>": plain text with it is shown as HTML)"},
    {R"("fAgreement": "a.html")",
     R"(fAgreement: a.html: must contain "<html>": without it HTML is shown as plain text)"},
    {R"("fAgreement": {"file": "a.txt", "form": "HEX"})",
     R"(fAgreement: form: must be "hex" or "MacRoman")"},
    {R"("fLogoPixelStr": "bad.png")",
     R"(fLogoPixelStr: ~/bad.png: must be a PNG file that can be read)"},
    {R"("fExecuteBeforeName": "run.sh")",
     R"(fExecuteBeforeName: "run.sh": must be the name of one of the "helpers" or begin with one of "UserAccount/", "InstallFolder/", "FixedPath/", "SetupFolder/")"},
    {R"("helpers": "run.sh")", R"(helpers: must be a list of names, in brackets)"},
    {R"("helpers": ["none"])", R"(helpers: ~/none: no such file or folder)"},
    {R"("helpers": ["payload/../run.sh", "run.sh"])",
     R"(helpers: ~/run.sh: must have another name, which exists in the bundle already)"},
    {R"("compression": "xz")", R"(compression: "xz": must be "deflate" or "zstd")"},
    {R"("payload": "none")", R"(payload: ~/none: no such folder)"},
    {R"("payload": "old", "patch": {"old": "old", "new": "new"})",
     R"(patch: takes the place of "payload"; remove one of the two)"},
    {R"("fInstallOptions": [{"caption": "O", "source": "options/one"}, {"caption": "o", "source": "options/one"}])",
     R"(fInstallOptions: entry 2: caption: "o": must differ from those of the other entries)"},
    {R"("fInstallOptions": [{"caption": "O", "source": "options/one"}, {"caption": "P", "source": "other/one"}])",
     R"(fInstallOptions: entry 2: ~/other/one and ~/options/one: folders must have different names, which those of their archives are)"},
    {R"("fInstallOptions": [{"caption": "a,b", "source": "options/one"}])",
     R"(fInstallOptions: entry 1: "a,b,one.zip,Tool," would be read as something else: no part may contain "," or "|")"},
    {R"("fInstallOptions": [{"caption": "H", "source": "options/one", "folder": "../x"}])",
     R"(fInstallOptions: entry 1: folder: "../x": must be a folder below the target folder)"},
    {R"("fInstallOptions": [{"caption": "H", "source": "options/http"}])",
     R"(fInstallOptions: entry 1: source: "http.zip": must not begin with "http", as an address does)"},
    {R"("fInstallOptions": [{"caption": "H", "source": "http://h/x", "content": "options/one"}])",
     R"(fInstallOptions: ~/options/one: its archive must have at least 10000 bytes to be downloaded, has 119)"},
    {R"("fInstallOptions": [{"caption": "H", "source": "http://h/"}])",
     R"(fInstallOptions: entry 1: source: "http://h/": must end in the name of a file)"},
    {R"("fInstallChoices": [{"caption": "H", "source": "http://h/x"}])",
     R"(fInstallChoices: entry 1: source: must be a folder: only an option can be downloaded)"},
    {R"("fPostCopy": {})", R"(fPostCopy: must be a list, in brackets)"},
    {R"("fPostCopy": [{"copy": "a=b", "to": "/x"}])",
     R"(fPostCopy: entry 1: "a=b=/x" would be read as something else: no path may contain "|", "=" or, where it has a meaning there, ";", "]" or "}", and no item may have the name of a command)"},
    {R"("fPostCopy": [{"copy": "preinstallCopy", "to": "/x"}])",
     R"(fPostCopy: entry 1: "preinstallCopy=/x" would be read as something else: no path may contain "|", "=" or, where it has a meaning there, ";", "]" or "}", and no item may have the name of a command)"},
    {R"("fPostCopy": [{"copy": "/file", "to": "/x"}])",
     R"(fPostCopy: entry 1: "/file": must be the path of an item below the target folder)"},
    {R"("fPostCopy": [{"copy": "file", "to": "/x}y", "ifNothingThere": true}])",
     R"(fPostCopy: entry 1: "file={/x}y}" would be read as something else: no path may contain "|", "=" or, where it has a meaning there, ";", "]" or "}", and no item may have the name of a command)"},
    {R"("fPostCopy": [{"copy": "file", "to": "/x", "ifFolder": "/f]g"}])",
     R"(fPostCopy: entry 1: "file=[/f]g]/x" would be read as something else: no path may contain "|", "=" or, where it has a meaning there, ";", "]" or "}", and no item may have the name of a command)"},
    {R"("fPostCopy": [{"copy": "file", "to": "/x", "ifFolder": "/f", "ifNothingThere": true}])",
     R"(fPostCopy: entry 1: ifFolder: must not come together with "ifNothingThere")"},
    {R"("fPostCopy": [{"delete": "/a", "to": "/b"}])",
     R"(fPostCopy: entry 1: to: there is no such field)"},
    {R"("fPostCopy": [{"delete": "relative"}])",
     R"(fPostCopy: entry 1: "relative": must begin with "/" or "UserAccount/")"},
    {R"("fPostCopy": [{"preInstallDelete": "UserAccount/x"}])",
     R"(fPostCopy: entry 1: "UserAccount/x": must begin with "/")"},
    {R"("fPostCopy": [{"preInstallCopy": "/a", "to": "/x;y"}])",
     R"(fPostCopy: entry 1: "preinstallcopy=/a;/x;y" would be read as something else: no path may contain "|", "=" or, where it has a meaning there, ";", "]" or "}", and no item may have the name of a command)"},
});

constexpr auto kWarnings = std::to_array<Mistake>({
    {R"("pieceSize": 500)",
     R"(pieceSize: must be left out: the installer of a payload in pieces asks to be dragged out of the Downloads folder and ends)"},
    {R"("helpers": ["run.sh"], "fExecuteAfterName": "run.sh")",
     R"(fExecuteAfterName: ~/run.sh: must be executable (chmod +x), since the installer starts it)"},
    {R"("fPostCopy": [{"copy": "File", "to": "/x"}])",
     R"(fPostCopy: entry 1: "File": must be an item of the payload)"},
    {R"("fLogoPixelStr": "wide.png")",
     R"(fLogoPixelStr: must have at most 64 x 64 pixels to be shown in full, has 400 x 64)"},
    {R"("fBackgroundPixelStr": "wide.png")",
     R"(fBackgroundPixelStr: must have at most 396 x 238 pixels to be shown in full, has 400 x 64)"},
    {R"("payload": "empty")", R"(payload: must contain a file)"},
    {R"("payload": "same")",
     R"(payload: "A" and "a": names must differ in more than letter case, which many disks ignore)"},
    {R"("fURLActual": "mailto:a@b.example")",
     R"(fURLActual: "mailto:a@b.example": must be an address such as "https://a.example/page" or "a.example")"},
    {R"("fURLActual": "a.example/http")",
     R"(fURLActual: "a.example/http": must be an address such as "https://a.example/page" or "a.example")"},
    {R"("fURLDisplayed": "Site")",
     R"(fURLDisplayed: must come with "fURLActual", which the link opens)"},
    {R"("fCompletionURL": "www.a.example")",
     R"(fCompletionURL: "www.a.example": must be an address such as "https://a.example/page")"},
    {R"("fInstallOptions": [{"caption": "H", "source": "http://h/a b.zip"}])",
     R"(fInstallOptions: entry 1: source: "http://h/a b.zip": must begin with "http://" or "https://" and have no spaces (write "%20"))"},
    {R"("fInstallOptions": [{"caption": "H", "source": "http://h/file", "folder": "New"}])",
     R"(fInstallOptions: entry 1: source: must have another file name: the download replaces "file" of the payload and is deleted later)"},
    {R"("fInstallOptions": [{"caption": "H", "source": "options/themes", "folder": "Themes"}])",
     R"(fInstallOptions: entry 1: source: must not contain "Light": the payload has a folder "Themes/Light" that is not empty, so it would not be installed)"},
    {R"("fInstallChoices": [{"caption": "H", "source": "flat"}])",
     R"(fInstallChoices: entry 1: source: must not contain "Themes": the payload has a folder "Themes" that is not empty, so it would not be installed)"},
    {R"("patch": {"old": "old", "new": "old"})",
     R"(patch: must change something: both folders have the same contents)"},
    {R"("patch": {"old": "old", "new": "new"}, "fPostCopy": [{"copy": "x", "to": "/x"}])",
     R"(fPostCopy: entry 1: must not copy an item in a patch, whose own folder is deleted before)"},
    {R"("patch": {"old": "old", "new": "new"}, "fInstallOptions": [{"caption": "H", "source": "options/one"}])",
     R"(fInstallOptions: must be left out in a patch: it would be installed beside the folder)"},
});

class Mistakes : public testing::Test {
 protected:
  void SetUp() override {
    MakeTree(setup_,
             "payload/file=content payload/Themes/Light/a=a payload/link->.. a.txt=A a.html=A "
             "h.txt=<html> bad.png=x run.sh=#!/bin/sh read=me options/one/x=x other/one/x=x "
             "options/http/x=x options/themes/Light/b=b empty/ same/a=1 same/A=1 old/x= new/x=1 "
             "flat/Themes=x");
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = 400;
    image.height = 64;
    image.format = PNG_FORMAT_GRAY;
    const std::vector<png_byte> pixels(std::size_t{400} * 64);
    png_image_write_to_file(&image, (setup_ / "wide.png").c_str(), 0, pixels.data(), 0, nullptr);
  }

  /// The messages of a check, without the path of setup.json.
  std::vector<std::string> Check(const char* fields) {
    json setup = {{"fTargetFolder", "Tool"}, {"payload", "payload"}};
    setup.update(json::parse(std::string("{") + fields + "}"));
    if (setup.contains("patch") && setup["payload"] == "payload") {
      setup.erase("payload");
    }
    test::WriteFile(setup_ / "setup.json", setup.dump());
    Warnings messages;
    const std::string error = Refusal([&] { CheckBundle({.folder = setup_}, messages); });
    if (!error.empty()) {
      messages.list.push_back(error);
    }
    for (std::string& message : messages.list) {
      for (std::size_t at = 0; (at = message.find(setup_.string())) != std::string::npos;) {
        message.replace(at, setup_.string().size(), "~");
      }
      EXPECT_TRUE(message.starts_with("~/setup.json: ")) << message;
      message.erase(0, std::string("~/setup.json: ").size());
    }
    return messages.list;
  }

  test::ScratchFolder folder_;
  fs::path setup_ = folder_ / "setup";
};

TEST_F(Mistakes, AreReportedWithFieldAndAllowedValues) {
  for (const auto& row : kErrors) {
    EXPECT_EQ(Check(row.fields), std::vector<std::string>{row.message}) << row.fields;
  }
  for (const auto& row : kWarnings) {
    EXPECT_EQ(Check(row.fields), std::vector<std::string>{row.message}) << row.fields;
  }
}

TEST(CheckExpansionTime, WarnsIfExpansionTakesLongerThanTheInstallerWaits) {
  struct Row {
    Contents contents;
    std::uint64_t archive;
    bool warns;
  };
  // Half a second for an archive of less than 3,000,000 bytes.
  for (const Row& row : {Row{{1, 50'000'000}, 50'000, false},
                         {{1, 60'000'000}, 60'000, true},
                         {{5'000, 0}, 500'000, false},
                         {{6'000, 0}, 600'000, true},
                         {{5'000, 283'000'000}, 85'000'000, false}}) {
    int warnings = 0;
    CheckExpansionTime(row.contents, row.archive, [&](const std::string&) { ++warnings; });
    EXPECT_EQ(warnings, row.warns ? 1 : 0) << row.contents.files << " " << row.contents.bytes;
  }
}

TEST(Progress, SignalEndsTheRunAndThenTheProcess) {
  const auto run = [] {
    EndBySignals();
    (void)std::raise(SIGTERM);
    try {
      Progress().Packed({});
    } catch (const Interrupted&) {
      RaiseSignal();
    }
  };
  EXPECT_EXIT(run(), testing::KilledBySignal(SIGTERM), "");
}

}  // namespace
}  // namespace zephin::make_setup
