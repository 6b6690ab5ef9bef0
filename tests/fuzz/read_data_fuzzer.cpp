// Reads a setup record of any two files: the input up to its first line feed is the plain form of
// `Data`, the rest is `TextData`. Finds texts that have lost a byte or their position, and list
// entries whose archive would be expanded over an existing folder.
#include <algorithm>
#include <string>

#include "files/files.h"
#include "platform/framework/text.h"
#include "selection/placement.h"
#include "setup/bundle_files.h"
#include "setup/lists.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"

namespace zephin::test {
namespace {

/// Checks fields near both ends of each file. If these are correct, so are the ones between.
void CheckFields(const ZephinStubWindow& w, const String& data, const String& textData) {
  const auto at = [&textData](int position) { return NthField(textData, "|#|", position + 1); };
  Require(w.fTimeStamp == NthField(data, "$|~", 1));
  Require(w.fExecuteBeforeName == NthField(data, "$|~", 8));
  Require(w.fMessage == at(1) && w.fTargetFolder == at(6) && w.fPostCopy == at(28));
  Require(w.fPostCopy.IsEmpty() || w.fPostCopy.DeclaredEncoding() == Encoding::UTF8);
  Require(w.fPostInstallNotes == w.ReadPlainOrHtmlText(at(27)));
  String labels;
  for (const String& label : w.fLabels) {
    labels += "|" + label;
  }
  Require(Mid(labels, 2) == at(5));
}

void CheckList(const String& list) {
  const auto entries = ReadSelectionList(list);
  const Array<String> texts = Split(list, "|");
  Require(std::ssize(entries) == texts.Count());
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const auto& [caption, source, folder, tip] = entries[i];
    const String fields = caption + "," + source + "," + folder + "," + tip + ",";
    const String text = texts(static_cast<std::int64_t>(i)) + ",,,,";
    Require(text.View().starts_with(fields.View()));
    // Folders of this machine are only looked at.
    const Placement place = PlaceOf("/usr", folder, "_Option");
    Require(place.mergeFolder.IsEmpty() ? !ViewConst::DirectoryExists(place.extractFolder)
                                        : place.extractFolder == place.mergeFolder + "_Option");
  }
}

}  // namespace

void TryInput(std::string_view input) {
  StubRun& run = BareStub();
  const std::size_t end = std::min(input.find('\n'), input.size());
  const std::string data(input.substr(0, end));
  const std::string textData(input.substr(std::min(end + 1, input.size())));
  std::string scrambled = data;
  ScrambleBytes(scrambled, 0);
  WriteFile(run.Resources() / "Data", scrambled);
  WriteFile(run.Resources() / "TextData", textData);
  Require(run.BareWindow().ReadData() == !data.empty());
  if (!data.empty()) {
    CheckFields(run.BareWindow(), {data, Encoding::None}, Utf8(textData));
    CheckList(run.BareWindow().fInstallChoices);
    CheckList(run.BareWindow().fInstallOptions);
  }
}

}  // namespace zephin::test
