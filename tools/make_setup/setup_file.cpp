#include "tools/make_setup/setup_file.h"

#include <algorithm>
#include <array>

#include "platform/framework/text.h"
#include "tools/make_setup/fields.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/pages.h"
#include "tools/make_setup/pictures.h"
#include "tools/make_setup/setup_error.h"
#include "tools/make_setup/setup_lists.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

/// What stands in the table of captions at each index, in short; empty where nothing is shown.
constexpr std::array<const char*, kLabelCount> kLabelNames{"notWritable",
                                                           "quit",
                                                           "install",
                                                           "cancel",
                                                           "ok",
                                                           "accept",
                                                           "info",
                                                           "agreementTitle",
                                                           "infoTitle",
                                                           "",
                                                           "replaceTitle",
                                                           "replaceFirst",
                                                           "replaceSecond",
                                                           "failed",
                                                           "folderTitle",
                                                           "folderSelect",
                                                           "nextDisc",
                                                           "",
                                                           "patchNoTarget",
                                                           "installing",
                                                           "",
                                                           "pleaseWait",
                                                           "downloading",
                                                           "choiceTitle",
                                                           "optionsTitle",
                                                           "preNotesTitle",
                                                           "releaseNotesTitle"};

std::vector<std::string> ReadLabels(Fields& setup) {
  std::vector<std::string> labels(kLabelCount);
  if (!setup.Has("fLabels")) {
    return labels;
  }
  return At("fLabels", [&] {
    Fields captions(setup.Value("fLabels"));
    for (std::size_t i = 0; i < labels.size(); ++i) {
      if (*kLabelNames.at(i) != '\0') {
        labels[i] = captions.Text(kLabelNames.at(i));
      }
    }
    captions.RefuseOthers();
    return labels;
  });
}

/// A bare name that leads to no other folder than the one it names, with room for the endings that
/// the stub puts behind it.
std::string ReadTargetFolder(Fields& setup) {
  constexpr std::size_t kLongest = 240;
  std::string name = setup.NeededText("fTargetFolder");
  if (name == "." || name == ".." || name.find('/') != std::string::npos ||
      name.size() > kLongest) {
    throw SetupError("fTargetFolder: " + Quoted(name) +
                     " must be the name of a folder, without a path");
  }
  return name;
}

std::string ReadKeyword(Fields& setup, const std::string& field,
                        const std::vector<std::string>& keywords) {
  std::string keyword = setup.Text(field);
  if (!keyword.empty() && std::find(keywords.begin(), keywords.end(), keyword) == keywords.end()) {
    throw SetupError(field + ": " + Quoted(keyword) + " is none of its keywords");
  }
  return keyword;
}

void ReadTexts(Fields& setup, SetupRecord& record) {
  record.fTargetFolder = ReadTargetFolder(setup);
  record.fTimeStamp = setup.Text("fTimeStamp");
  record.fMessage = setup.Text("fMessage");
  record.fURLActual = setup.Text("fURLActual");
  record.fURLDisplayed = setup.Text("fURLDisplayed");
  record.fCompletionURL = setup.Text("fCompletionURL");
  record.fCopyright = setup.Text("fCopyright");
  record.fWindowTitle = setup.Text("fWindowTitle");
  record.fMinOS = ReadKeyword(setup, "fMinOS",
                              {"MacOS10.7", "MacOS10.8", "MacOS10.9", "MacOS10.10", "MacOS10.11",
                               "MacOS10.12", "MacOS10.13"});
  record.fMinRAM =
      ReadKeyword(setup, "fMinRAM", {"250MB", "500MB", "1GB", "2GB", "4GB", "8GB", "16GB", "32GB"});
  record.fApplicationFolder = setup.Flag("fApplicationFolder");
  record.fPromptToReplace = setup.Flag("fPromptToReplace");
  record.fCenterMessage = setup.Flag("fCenterMessage");
  record.fLabels = ReadLabels(setup);
}

std::string ReadPage(const std::string& name, const std::string& form, const fs::path& folder) {
  const std::string extension = fs::path(name).extension().string();
  if (extension != ".txt" && extension != ".html") {
    throw SetupError(Quoted(name) + R"( must be a file "*.txt" or "*.html")");
  }
  if (!form.empty() && form != "hex" && form != "MacRoman") {
    throw SetupError(R"(form: must be "hex" or "MacRoman")");
  }
  std::string text = ReadFile(folder / name);
  return At(name, [&] {
    if (text.starts_with("\xEF\xBB\xBF")) {
      text.erase(0, 3);
    }
    if (text.ends_with('\n')) {
      text.pop_back();
    }
    const PageForm pageForm = form.empty()    ? PageForm::Fitting
                              : form == "hex" ? PageForm::Hex
                                              : PageForm::MacRoman;
    return PageText(text, extension == ".html" ? PageKind::Html : PageKind::Plain, pageForm);
  });
}

void ReadPages(Fields& setup, const fs::path& folder, SetupRecord& record) {
  for (const auto& [field, page] : {std::pair{"fAgreement", &record.fAgreement},
                                    {"fInfo", &record.fInfo},
                                    {"fPreInstallNotes", &record.fPreInstallNotes},
                                    {"fPostInstallNotes", &record.fPostInstallNotes}}) {
    if (!setup.Has(field)) {
      continue;
    }
    *page = At(field, [&, name = field] {
      if (setup.Value(name).is_string()) {
        return ReadPage(setup.Value(name), "", folder);
      }
      Fields parts(setup.Value(name));
      const std::string file = parts.NeededText("file");
      const std::string form = parts.Text("form");
      parts.RefuseOthers();
      return ReadPage(file, form, folder);
    });
  }
}

void ReadPictures(Fields& setup, const fs::path& folder, SetupRecord& record) {
  for (const auto& [field, picture] : {std::pair{"fLogoPixelStr", &record.fLogoPixelStr},
                                       {"fPicturePixelStr", &record.fPicturePixelStr},
                                       {"fBackgroundPixelStr", &record.fBackgroundPixelStr}}) {
    const std::string name = setup.Text(field);
    if (!name.empty()) {
      *picture = At(field, [&] { return PictureTriple(ReadPng(folder / name)); });
    }
  }
}

/// A program that the record names must lie in the bundle, unless a token leads elsewhere.
std::string ReadProgram(Fields& setup, const std::string& field, const Setup& made) {
  std::string name = setup.Text(field);
  const auto beginsName = [&](const char* token) { return InStr(Utf8(name), token) == 1; };
  const auto isNamed = [&](const fs::path& helper) { return helper.filename() == name; };
  if (!name.empty() && !beginsName("UserAccount/") && !beginsName("InstallFolder/") &&
      !beginsName("FixedPath/") && !beginsName("SetupFolder/") &&
      std::none_of(made.helpers.begin(), made.helpers.end(), isNamed)) {
    throw SetupError(field + ": " + Quoted(name) + R"( is none of the files in "helpers")");
  }
  return name;
}

void ReadHelpers(Fields& setup, const fs::path& folder, Setup& made) {
  if (setup.Has("helpers")) {
    for (const std::string& name : ReadNames(setup, "helpers")) {
      if (!IsBelow(fs::path(name).filename().string()) || !fs::exists(folder / name)) {
        throw SetupError("helpers: " + (folder / name).string() + ": no such file or folder");
      }
      made.helpers.push_back(folder / name);
    }
  }
  made.record.fExecuteBeforeName = ReadProgram(setup, "fExecuteBeforeName", made);
  made.record.fExecuteAfterName = ReadProgram(setup, "fExecuteAfterName", made);
}

void ReadPatch(Fields& setup, const fs::path& folder, Setup& made) {
  At("patch", [&] {
    Fields parts(setup.Value("patch"));
    PatchSource& patch = made.patch.emplace();
    patch.oldFolder = folder / parts.NeededText("old");
    patch.newFolder = folder / parts.NeededText("new");
    parts.RefuseOthers();
  });
}

void ReadPayload(Fields& setup, const fs::path& folder, Setup& made) {
  made.record.fInstallationPatch = setup.Flag("fInstallationPatch") || setup.Has("patch");
  made.record.fEncryptionLen = static_cast<std::int64_t>(setup.Number("fEncryptionLen"));
  made.pieceSize = setup.Number("pieceSize");
  if (setup.Has("patch")) {
    if (setup.Has("payload")) {
      throw SetupError(R"(patch: takes the place of "payload", so only one of them can be there)");
    }
    ReadPatch(setup, folder, made);
    return;
  }
  made.payload = folder / setup.NeededText("payload");
}

}  // namespace

Setup ReadSetup(const fs::path& folder, const std::map<std::string, std::string>& values) {
  const fs::path file = folder / "setup.json";
  return At(file.string(), [&] {
    const nlohmann::json document = ReadJson(file.string(), values);
    Fields fields(document);
    Setup setup;
    ReadTexts(fields, setup.record);
    ReadPages(fields, folder, setup.record);
    ReadPictures(fields, folder, setup.record);
    ReadHelpers(fields, folder, setup);
    ReadPayload(fields, folder, setup);
    ReadSelections(fields, folder, setup);
    setup.record.fPostCopy = ReadCopyList(fields);
    fields.RefuseOthers();
    // The joined record refuses what its separators rule out: let it do so with the file's name.
    (void)OuterRecord(setup.record);
    (void)InnerRecord(setup.record);
    return setup;
  });
}

}  // namespace zephin::make_setup
