#include "tools/make_setup/setup_file.h"

#include <algorithm>
#include <array>

#include "platform/framework/text.h"
#include "setup/captions.h"
#include "setup/path_tokens.h"
#include "setup/requirements.h"
#include "tools/make_setup/fields.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/pages.h"
#include "tools/make_setup/pictures.h"
#include "tools/make_setup/record_writer.h"
#include "tools/make_setup/setup_error.h"
#include "tools/make_setup/setup_lists.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

/// Texts of the record that are lists in the file. setup_lists.h reads them.
constexpr std::array kLists{&SetupRecord::fInstallChoices, &SetupRecord::fInstallOptions,
                            &SetupRecord::fPostCopy};

/// Reads the field of one position, for each kind of content.
class FieldReader {
 public:
  FieldReader(Fields& fields, fs::path folder, SetupRecord& record)
      : fields_(fields), folder_(std::move(folder)), record_(record) {}

  template <class Positions>
  void ReadAll(const Positions& positions) {
    for (const Position& position : positions) {
      name_ = position.field;
      std::visit(*this, position.content);
    }
  }

  void operator()(ReservedPosition /*position*/) const {}
  void operator()(TextPosition position) const {
    if (std::find(kLists.begin(), kLists.end(), position.text) == kLists.end()) {
      record_.*position.text = Utf8(fields_.Text(name_));
    }
  }
  void operator()(FlagPosition position) const { record_.*position.flag = fields_.Flag(name_); }
  void operator()(NumberPosition position) const {
    record_.*position.number = static_cast<std::int64_t>(fields_.Number(name_));
  }
  void operator()(PicturePosition position) const {
    const std::string file = fields_.Text(name_);
    if (!file.empty()) {
      const PixelRows picture = At(name_, [&] { return ReadPng(folder_ / file); });
      record_.*position.pixels = Utf8(PixelString(picture));
      record_.*position.width = picture.width;
      record_.*position.height = picture.height;
    }
  }
  void operator()(PagePosition position) const {
    // Text can't be asked for: the value may be an object.
    if (fields_.Has(name_)) {
      record_.*position.page = At(name_, [&] { return Page(fields_.Value(name_)); });
    }
  }
  void operator()(CaptionsPosition position) const {
    if (fields_.Has(name_)) {
      record_.*position.captions = At(name_, [&] { return Captions(fields_.Value(name_)); });
    }
  }

 private:
  String Page(const nlohmann::json& value) const {
    if (value.is_string()) {
      return ReadPage(folder_, value, PageForm::Shortest);
    }
    Fields parts(value);
    const std::string file = parts.NeededText("file");
    const std::string form = parts.Text("form");
    parts.RefuseOthers();
    if (!form.empty() && form != "hex" && form != "MacRoman") {
      throw SetupError(R"(form: must be "hex" or "MacRoman")");
    }
    return ReadPage(folder_, file,
                    form.empty()    ? PageForm::Shortest
                    : form == "hex" ? PageForm::Hex
                                    : PageForm::MacRoman);
  }

  static Array<String> Captions(const nlohmann::json& value) {
    Fields captions(value);
    Array<String> list;
    for (const CaptionRow& row : kCaptions) {
      // An index that nothing uses has an empty entry, which keeps the numbers of the others.
      list.Append(*row.name == '\0' ? String() : Utf8(captions.Text(row.name)));
    }
    captions.RefuseOthers();
    return list;
  }

  Fields& fields_;
  fs::path folder_;
  SetupRecord& record_;
  std::string name_;
};

/// The installer appends endings such as "Patch" to the name.
void CheckTargetFolder(const std::string& name) {
  constexpr std::size_t kLongest = 240;
  if (name.empty()) {
    throw SetupError("fTargetFolder: is required");
  }
  if (name == "." || name == ".." || name.find('/') != std::string::npos ||
      name.size() > kLongest) {
    throw SetupError("fTargetFolder: " + Quoted(name) +
                     ": must be the name of a folder, not a path, of at most " +
                     std::to_string(kLongest) + " bytes");
  }
}

template <class Requirements>
void CheckKeyword(const char* field, const String& keyword, const Requirements& requirements) {
  // The installer takes an unknown keyword for "nothing is required", silently.
  std::string allowed;
  for (const Requirement& requirement : requirements) {
    if (keyword == requirement.keyword) {
      return;
    }
    allowed += (allowed.empty() ? "" : ", ") + std::string(requirement.keyword);
  }
  if (!keyword.IsEmpty()) {
    throw SetupError(std::string(field) + ": " + Quoted(keyword.Bytes()) + ": must be one of " +
                     allowed);
  }
}

/// A program is in the bundle unless its name begins with a token.
void CheckProgram(const char* field, const String& name, const Setup& setup) {
  // Other names are looked up in the bundle, where only helpers are.
  std::string tokens;
  for (const PathTokenRow& token : kPathTokens) {
    if (InStr(name, token.text) == 1) {
      return;
    }
    tokens += ", " + Quoted(token.text);
  }
  const auto isNamed = [&](const fs::path& helper) { return helper.filename() == name.View(); };
  if (!name.IsEmpty() && std::none_of(setup.helpers.begin(), setup.helpers.end(), isNamed)) {
    throw SetupError(std::string(field) + ": " + Quoted(name.Bytes()) +
                     R"(: must be the name of one of the "helpers" or begin with one of)" +
                     tokens.substr(1));
  }
}

void ReadHelpers(Fields& fields, const fs::path& folder, Setup& setup) {
  for (const std::string& name : ReadNames(fields, "helpers")) {
    // "dir/" and ".." have no name that the bundle's copy could get.
    if (!IsBelow(fs::path(name).filename().string()) || !fs::exists(folder / name)) {
      throw SetupError("helpers: " + (folder / name).string() + ": no such file or folder");
    }
    setup.helpers.push_back(folder / name);
  }
}

void ReadCompression(Fields& fields, Setup& setup) {
  const std::string name = fields.Text("compression");
  // Deflate is what archive programs of every age read.
  if (!name.empty() && name != "deflate" && name != "zstd") {
    throw SetupError("compression: " + Quoted(name) + R"(: must be "deflate" or "zstd")");
  }
  setup.compression = name == "zstd" ? Compression::Zstd : Compression::Deflate;
}

void ReadPayload(Fields& fields, const fs::path& folder, Setup& setup) {
  // Before the patch, which may be cut as well.
  setup.pieceSize = fields.Number("pieceSize");
  if (!fields.Has("patch")) {
    setup.payload = folder / fields.NeededText("payload");
    return;
  }
  if (fields.Has("payload")) {
    throw SetupError(R"(patch: takes the place of "payload"; remove one of the two)");
  }
  // The flag follows from the field, so that the two can't contradict each other.
  setup.record.fInstallationPatch = true;
  At("patch", [&] {
    Fields parts(fields.Value("patch"));
    setup.patch = {folder / parts.NeededText("old"), folder / parts.NeededText("new")};
    parts.RefuseOthers();
  });
}

}  // namespace

Setup ReadSetup(const fs::path& folder, const std::map<std::string, std::string>& values) {
  const fs::path file = folder / "setup.json";
  return At(file.string(), [&] {
    const nlohmann::json document = ReadJson(file.string(), values);
    Fields fields(document);
    Setup setup;
    SetupRecord& record = setup.record;
    FieldReader reader(fields, folder, record);
    reader.ReadAll(kDataPositions);
    reader.ReadAll(kTextDataPositions);
    CheckTargetFolder(record.fTargetFolder.Bytes());
    CheckKeyword("fMinOS", record.fMinOS, kSystemRequirements);
    CheckKeyword("fMinRAM", record.fMinRAM, kMemoryRequirements);
    ReadHelpers(fields, folder, setup);
    CheckProgram("fExecuteBeforeName", record.fExecuteBeforeName, setup);
    CheckProgram("fExecuteAfterName", record.fExecuteAfterName, setup);
    ReadCompression(fields, setup);
    ReadPayload(fields, folder, setup);
    ReadSelections(fields, folder, setup);
    record.fPostCopy = ReadCommands(fields);
    // Behind all reads: what nobody asked for by now is misspelt.
    fields.RefuseOthers();
    // Written here, too, for the sake of its checks: they then name this file.
    (void)DataText(record);
    (void)TextDataText(record);
    return setup;
  });
}

}  // namespace zephin::make_setup
